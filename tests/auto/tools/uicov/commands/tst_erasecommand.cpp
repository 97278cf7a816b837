// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/datafile.h"
#include "testlib/commandrunner.h"
#include "testlib/randomrun.h"
#include "testlib/recordingbuilder.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using TestLib::CommandRunner;
using Uicov::Runs::Run;
using Uicov::Store::DataFile;
using Uicov::Store::Sql;

class TestEraseCommand : public TestLib::TestCase {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    CommandRunner m_runner{QStringLiteral(UICOV_PROGRAM)};
    QString m_path;

    int erase(const QStringList& arguments) {
        return m_runner.run(QStringList{QStringLiteral("erase")} + arguments);
    }

    QStringList runs() const {
        DataFile file;
        QStringList uuids = file.open(m_path, Sql::Access::Read) ? QStringList() : file.runs();
        uuids.sort();
        return uuids;
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(QStringLiteral(".uicov"));
        m_runner.setWorkingFolder(m_folder->path());
        m_runner.setVariable(QStringLiteral("UICOV_FILE"), QString());
        DataFile file;
        QVERIFY(!file.create(m_path));
        for (int i = 1; i <= 3; ++i) {
            Run run;
            run.uuid = TestLib::uuid(i);
            run.contexts = QStringList{QString()};
            run.labels.insert(QStringLiteral("n"), QString::number(i % 2));
            QVERIFY(!file.add(run));
        }
        QVERIFY(!file.commit());
    }

    void cleanup() { TestLib::TestCase::cleanup(); }

    void theWholeFileGoes() {
        QCOMPARE(erase({}), 0);
        QVERIFY(!QFile::exists(m_path));
        QCOMPARE(m_runner.errors(),
                 QStringLiteral("uicov: .uicov is erased\nuicov: next: uicov run -- APP\n"));
        QCOMPARE(erase({}), 1);
        QVERIFY(m_runner.errors().endsWith(QStringLiteral("[input-missing]\n")));
    }

    void theVariableNamesIt() {
        m_runner.setWorkingFolder(QStringLiteral("/"));
        m_runner.setVariable(QStringLiteral("UICOV_FILE"), m_path);
        QCOMPARE(erase({}), 0);
        QVERIFY(!QFile::exists(m_path));
    }

    void singleRunsGoByUuidOrLabel() {
        QCOMPARE(erase({QStringLiteral("--run"), TestLib::uuid(2)}), 0);
        QCOMPARE(runs(), QStringList({TestLib::uuid(1), TestLib::uuid(3)}));
        QCOMPARE(erase({QStringLiteral("--label"), QStringLiteral("n=0")}), 1);
        QVERIFY(m_runner.errors().endsWith(QStringLiteral("[no-such-run]\n")));
        QCOMPARE(erase({QStringLiteral("--label"), QStringLiteral("n=1")}), 0);
        QCOMPARE(runs(), QStringList());
        QVERIFY(QFile::exists(m_path));
    }

    void aLabelWithoutValueMeansAnyValue() {
        QCOMPARE(erase({QStringLiteral("--label"), QStringLiteral("none")}), 1);
        QCOMPARE(runs().size(), 3);
        QCOMPARE(erase({QStringLiteral("--label"), QStringLiteral("n")}), 0);
        QCOMPARE(runs().size(), 0);
    }

    void nothingElseIsErased() {
        QFile file(m_folder->filePath(QStringLiteral("notes")));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("mine") == 4);
        file.close();
        TestLib::RecordingBuilder recording;
        QVERIFY(recording.write(m_folder->filePath(QStringLiteral("x.uirec"))));
        for (const char* name : {"notes", "x.uirec", "."}) {
            QCOMPARE(erase({QLatin1String(name)}), 1);
            QVERIFY2(m_runner.errors().contains(QStringLiteral("not erased")),
                     qPrintable(m_runner.errors()));
            QVERIFY(QFile::exists(m_folder->filePath(QLatin1String(name))));
        }
    }

    void oneFileAtATime() {
        QCOMPARE(erase({QStringLiteral("a"), QStringLiteral("b")}), 1);
        QVERIFY(m_runner.errors().endsWith(QStringLiteral("[wrong-use]\n")));
        QCOMPARE(runs().size(), 3);
    }
};

QTEST_GUILESS_MAIN(TestEraseCommand)
#include "tst_erasecommand.moc"
