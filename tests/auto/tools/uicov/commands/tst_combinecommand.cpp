// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/datafile.h"
#include "testlib/commandrunner.h"
#include "testlib/samplerecording.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using TestLib::CommandRunner;
using TestLib::RecordingBuilder;
using Uicov::Store::DataFile;
using Uicov::Store::Sql;

class TestCombineCommand : public TestLib::TestCase {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    CommandRunner m_runner{QStringLiteral(UICOV_PROGRAM)};

    QString path(const QString& name) const { return m_folder->filePath(name); }

    int combine(const QStringList& arguments) {
        return m_runner.run(QStringList{QStringLiteral("combine")} + arguments);
    }

    int runsIn(const QString& name) const {
        DataFile file;
        return file.open(path(name), Sql::Access::Read) ? -1 : file.runs().size();
    }

    void record(const QString& name, bool endsInOrder = true) const {
        RecordingBuilder recording;
        recording.addLog(RecordingFormat::Severity::Info, name); // makes it a run of its own
        TestLib::fillSampleRecording(recording, endsInOrder);
        QVERIFY(recording.write(path(name)));
    }

    void put(const QString& name, const QByteArray& bytes) const {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_runner.setWorkingFolder(m_folder->path());
        m_runner.setVariable(QStringLiteral("UICOV_FILE"), QString());
        record(QStringLiteral("a.uirec"));
        record(QStringLiteral("b.uirec"));
    }

    void cleanup() { TestLib::TestCase::cleanup(); }

    void theDefaultIsTheDataFileHere() {
        QCOMPARE(combine({QStringLiteral("a.uirec"), QStringLiteral("b.uirec")}), 0);
        QCOMPARE(m_runner.output(), QString());
        QCOMPARE(m_runner.errors(),
                 QStringLiteral("uicov: .uicov now holds 2 runs: 2 added, 0 known already, from 2 "
                                "files\nuicov: next: uicov report -m\n"));
        QCOMPARE(runsIn(QStringLiteral(".uicov")), 2);
    }

    void theVariableAndTheOptionNameAnother() {
        m_runner.setVariable(QStringLiteral("UICOV_FILE"), QStringLiteral("v%%.uicov"));
        QCOMPARE(combine({QStringLiteral("a.uirec")}), 0);
        QCOMPARE(runsIn(QStringLiteral("v%.uicov")), 1);
        QCOMPARE(
            combine({QStringLiteral("-o"), QStringLiteral("my file"), QStringLiteral("a.uirec")}),
            0);
        QVERIFY(m_runner.errors().endsWith(QStringLiteral("next: uicov report -m 'my file'\n")));
    }

    void appendingKeepsWhatIsThereAndReplacingDoesNot() {
        QCOMPARE(combine({QStringLiteral("a.uirec")}), 0);
        QCOMPARE(combine({QStringLiteral("--append"), QStringLiteral("b.uirec")}), 0);
        QCOMPARE(runsIn(QStringLiteral(".uicov")), 2);
        QCOMPARE(combine({QStringLiteral("b.uirec")}), 0);
        QCOMPARE(runsIn(QStringLiteral(".uicov")), 1);
    }

    void theOutputCanBeAnInput() {
        QCOMPARE(combine({QStringLiteral("a.uirec")}), 0);
        QCOMPARE(combine({QStringLiteral(".uicov"), QStringLiteral("b.uirec")}), 0);
        QCOMPARE(runsIn(QStringLiteral(".uicov")), 2);
        QCOMPARE(
            combine({QStringLiteral("-a"), QStringLiteral(".uicov"), QStringLiteral("a.uirec")}),
            0);
        QCOMPARE(runsIn(QStringLiteral(".uicov")), 2);
    }

    void aFolderStandsForAllInItThatCanBeRead() {
        put(QStringLiteral("notes.txt"), "nothing of ours");
        QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("empty")));
        QCOMPARE(combine({QStringLiteral("-o"), QStringLiteral("all.uicov"), QStringLiteral(".")}),
                 0);
        QCOMPARE(runsIn(QStringLiteral("all.uicov")), 2);
        QCOMPARE(combine({QStringLiteral("empty")}), 1);
        QVERIFY(m_runner.errors().contains(QStringLiteral("no data file and no recording")));
    }

    void aFileSizeLimitIsToldAndNothingStays() {
        QCOMPARE(combine({QStringLiteral("a.uirec")}), 0);
        for (const QString& mode : {QStringLiteral("-a"), QStringLiteral("-q")}) {
            CommandRunner shell(QStringLiteral("/bin/sh"));
            shell.setWorkingFolder(m_folder->path());
            QCOMPARE(shell.run({QStringLiteral("-c"), QStringLiteral("ulimit -f 8; exec \"$@\""),
                                QStringLiteral("sh"), QStringLiteral(UICOV_PROGRAM),
                                QStringLiteral("combine"), mode, QStringLiteral("-o"),
                                QStringLiteral(".uicov"), QStringLiteral("b.uirec")}),
                     1);
            QVERIFY2(
                shell.errors().startsWith(QStringLiteral("uicov: error: .uicov: cannot be ")) &&
                    shell.errors().contains(QStringLiteral(": File too large; ")) &&
                    shell.errors().endsWith(QStringLiteral(" [output-not-writable]\n")),
                qPrintable(shell.errors()));
            QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
                     QStringList({QStringLiteral(".uicov"), QStringLiteral("a.uirec"),
                                  QStringLiteral("b.uirec")}));
            QCOMPARE(runsIn(QStringLiteral(".uicov")), 1);
        }
    }

    void whatAnEarlierRunLeftIsOffered() {
        const QString left = QStringLiteral(".uicov.run-1");
        QVERIFY(QDir(m_folder->path()).mkdir(left));
        record(left + QStringLiteral("/c.uirec"));
        QCOMPARE(combine({QStringLiteral("a.uirec")}), 0);
        QVERIFY2(m_runner.errors().contains(
                     QStringLiteral("uicov: an earlier run could not be finished; add what it "
                                    "recorded with: uicov combine -a -o .uicov .uicov.run-1, then "
                                    "remove the folder\n")),
                 qPrintable(m_runner.errors()));
        QCOMPARE(combine({QStringLiteral("-a"), left}), 0);
        QCOMPARE(runsIn(QStringLiteral(".uicov")), 2);
        QVERIFY2(m_runner.errors().contains(QStringLiteral("uicov: .uicov.run-1 is not needed any "
                                                           "more; next: rm -r .uicov.run-1\n")),
                 qPrintable(m_runner.errors()));
    }

    void whatIsHalfWrittenIsNotAmongTheFilesOfAFolder() {
        QCOMPARE(combine({QStringLiteral("a.uirec")}), 0);
        QVERIFY(QFile::copy(path(QStringLiteral(".uicov")), path(QStringLiteral(".x.uicov.part"))));
        QVERIFY(QFile::remove(path(QStringLiteral("a.uirec"))));
        QVERIFY(QFile::remove(path(QStringLiteral(".uicov"))));
        QCOMPARE(combine({QStringLiteral("-o"), QStringLiteral("all"), QStringLiteral(".")}), 0);
        QCOMPARE(runsIn(QStringLiteral("all")), 1);
    }

    void whatCannotBeUsedIsNamedAndTheRestIsCombined() {
        put(QStringLiteral("broken.uirec"), "GIF89a");
        const QStringList files{QStringLiteral("a.uirec"), QStringLiteral("broken.uirec"),
                                QStringLiteral("none.uirec")};
        QCOMPARE(combine(files), 1);
        QVERIFY(m_runner.errors().contains(QStringLiteral("broken.uirec: is not a recording")));
        QVERIFY(m_runner.errors().contains(QStringLiteral("none.uirec: there is no such file")));
        QCOMPARE(runsIn(QStringLiteral(".uicov")), 1);
        QCOMPARE(combine(QStringList{QStringLiteral("--strict")} + files), 3);
        QVERIFY(QFile::exists(path(QStringLiteral("broken.uirec"))));
    }

    void strictEndsWith3WhereARunIsPartial() {
        record(QStringLiteral("killed.uirec"), false);
        QCOMPARE(combine({QStringLiteral("killed.uirec")}), 0);
        QVERIFY(m_runner.errors().contains(QStringLiteral("[ended-abnormally]")));
        QCOMPARE(combine({QStringLiteral("--strict"), QStringLiteral("killed.uirec")}), 3);
    }

    void whereNothingCanBeUsedNothingIsWritten() {
        QCOMPARE(combine({QStringLiteral("none.uirec")}), 1);
        QVERIFY(!QFile::exists(path(QStringLiteral(".uicov"))));
        QCOMPARE(combine({QStringLiteral("a.uirec")}), 0);
        QCOMPARE(combine({QStringLiteral("none.uirec")}), 1);
        QCOMPARE(runsIn(QStringLiteral(".uicov")), 1);
    }

    void somethingElseIsNeverOverwritten() {
        put(QStringLiteral(".uicov"), "my notes");
        QCOMPARE(combine({QStringLiteral("a.uirec")}), 1);
        QVERIFY(m_runner.errors().endsWith(QStringLiteral("[output-foreign]\n")));
        QCOMPARE(
            combine({QStringLiteral("-o"), QStringLiteral("b.uirec"), QStringLiteral("a.uirec")}),
            1);
        QVERIFY(m_runner.errors().contains(QStringLiteral("is a recording and not overwritten")));
    }

    void quietSaysNothing() {
        QCOMPARE(combine({QStringLiteral("-q"), QStringLiteral("a.uirec")}), 0);
        QCOMPARE(m_runner.errors(), QString());
    }

    void noFileIsWrongUse() {
        QCOMPARE(combine({}), 1);
        QVERIFY(m_runner.errors().endsWith(QStringLiteral("[wrong-use]\n")));
    }
};

QTEST_GUILESS_MAIN(TestCombineCommand)
#include "tst_combinecommand.moc"
