// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/cli/inputs.h"
#include "console/terminal.h"
#include "store/datafile.h"
#include "testlib/randomrun.h"
#include "testlib/samplerecording.h"
#include "testlib/stderrcapture.h"
#include "testlib/testcase.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using TestLib::printed;
using TestLib::randomRun;
using TestLib::RecordingBuilder;
using TestLib::StderrCapture;
using Uicov::Commands::Cli::Inputs;
using Uicov::Runs::Run;
using Uicov::Store::DataFile;

class TestInputs : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    Uicov::Console::Terminal m_terminal;

    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

    /** All runs as text; empty when nothing could be read. */
    QStringList read(const QStringList& paths, bool withPictures = true) {
        Inputs inputs;
        inputs.setTakesPictures(withPictures);
        QStringList lines;
        if (inputs.add(paths, m_terminal)) {
            const bool isRead = inputs.forEach(
                [&lines](const Run& run) { lines.append(printed(run)); }, m_terminal);
            lines.append(isRead ? QString() : QStringLiteral("not read"));
        }
        return lines;
    }

    /** The one run, read while its recording is said to be going. */
    Run readGoing(const QStringList& paths) {
        Inputs inputs;
        inputs.setGoing({path("killed.uirec")});
        Run run;
        if (inputs.add(paths, m_terminal)) {
            inputs.forEach(
                [&run](const Run& each) {
                    if (each.uuid == TestLib::uuid(99)) {
                        run = each;
                    }
                },
                m_terminal);
        }
        return run;
    }

private Q_SLOTS:
    void initTestCase() {
        RecordingBuilder recording;
        TestLib::fillSampleRecording(recording);
        QVERIFY(recording.write(path("a.uirec")));
        RecordingBuilder killed;
        killed.addProcess({{QStringLiteral("run"), TestLib::uuid(99)}});
        TestLib::fillSampleRecording(killed, false);
        QVERIFY(killed.write(path("killed.uirec")));
        QRandomGenerator random(41);
        for (const char* name : {"b.uicov", "c.uicov"}) {
            DataFile file;
            QVERIFY(!file.create(path(name)));
            for (int i = 0; i < 4; ++i) {
                QVERIFY(!file.add(randomRun(random)));
            }
            QVERIFY(!file.commit());
        }
    }

    void recordingsAndDataFilesAreReadAlike() {
        const QStringList one = read({path("a.uirec")});
        QVERIFY(one.size() > 17);
        DataFile file;
        QVERIFY(!file.create(path("made.uicov")));
        Inputs inputs;
        inputs.setTakesPictures(true);
        QVERIFY(inputs.add({path("a.uirec")}, m_terminal));
        QVERIFY(inputs.forEach([&file](const Run& run) { file.add(run); }, m_terminal));
        QVERIFY(!file.commit());
        QCOMPARE(read({path("made.uicov")}), one);
        QCOMPARE(read({path("made.uicov"), path("a.uirec")}), one);
    }

    void theOrderOfFilesAndHowOftenOneIsNamedMakeNoDifference() {
        QStringList files{path("a.uirec"), path("b.uicov"), path("c.uicov")};
        const QStringList lines = read(files);
        QVERIFY(!lines.isEmpty());
        std::reverse(files.begin(), files.end());
        QCOMPARE(read(files), lines);
        QCOMPARE(read(files + files), lines);
    }

    void picturesAreLeftOutUnlessAskedFor() {
        const QStringList with = read({path("b.uicov")}).filter(QStringLiteral("picture 1"));
        QVERIFY(!with.isEmpty());
        QVERIFY(read({path("b.uicov")}, false).filter(QStringLiteral("picture 1")).isEmpty());
    }

    void whatCannotBeReadIsNamedAndSkipped() {
        Inputs inputs;
        StderrCapture capture;
        QVERIFY(inputs.add({path("none"), path("a.uirec"), path("killed.uirec")}, m_terminal));
        const QStringList lines = QString::fromUtf8(capture.take()).split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 3);
        QVERIFY(lines.at(0).endsWith(QStringLiteral("[input-missing]")));
        QVERIFY(lines.at(1).endsWith(QStringLiteral("[ended-abnormally]")));
        QCOMPARE(inputs.skippedFiles(), 1);
    }

    void nothingUsableIsAFailure() {
        StderrCapture capture;
        Inputs one;
        QVERIFY(!one.add({path("none")}, m_terminal));
        Inputs several;
        QVERIFY(!several.add({path("none"), path("neither")}, m_terminal));
        QCOMPARE(several.skippedFiles(), 2);
        QCOMPARE(capture.take().count('\n'), 3);
    }

    void aRecordingThatIsStillWrittenIsNoDamage() {
        StderrCapture errors;
        for (const QStringList& paths : {QStringList{path("killed.uirec")},
                                         QStringList{path("b.uicov"), path("killed.uirec")}}) {
            const Run run = readGoing(paths);
            QVERIFY(!run.isComplete);
            QCOMPARE(run.partialReason, QStringLiteral("is still going"));
            QVERIFY(!run.elements.empty());
        }
        QCOMPARE(errors.take(), QByteArray());
    }

    void onlyWhatTheFilterTakesIsThere() {
        for (const QStringList& paths :
             {QStringList{path("killed.uirec")}, QStringList{path("b.uicov")},
              QStringList{path("b.uicov"), path("killed.uirec")}}) {
            Inputs inputs;
            inputs.setFilter([](const Run& run) { return run.uuid == TestLib::uuid(99); });
            QVERIFY(inputs.add(paths, m_terminal));
            int runs = 0;
            QVERIFY(inputs.forEach([&runs](const Run&) { ++runs; }, m_terminal));
            QCOMPARE(runs, paths.contains(path("killed.uirec")) ? 1 : 0);
        }
    }
};

QTEST_GUILESS_MAIN(TestInputs)
#include "tst_inputs.moc"
