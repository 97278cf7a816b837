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
};

QTEST_GUILESS_MAIN(TestInputs)
#include "tst_inputs.moc"
