// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/runfolder.h"
#include "recording/framedecoder.h"
#include "recording/recordingreader.h"
#include "testlib/commandrunner.h"
#include "testlib/recordingbuilder.h"
#include "testlib/terminalrunner.h"
#include "testlib/testcase.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using TestLib::CommandRunner;
using TestLib::RecordingBuilder;
using Uicov::Launch::RunFolder;
using Uicov::Recording::Frame;
using Uicov::Recording::RecordingReader;

class TestMarkCommand : public TestLib::TestCase {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<RunFolder> m_run;
    std::unique_ptr<CommandRunner> m_runner;

    QString path(const char* name) const { return m_folder->filePath(QLatin1String(name)); }

    int mark(const QStringList& arguments) {
        return m_runner->run(QStringList{QStringLiteral("mark")} + arguments);
    }

    static QString session(int number) {
        return QStringLiteral("%1-0000-4000-8000-000000000000")
            .arg(number, 8, 10, QLatin1Char('0'));
    }

    /** A run that goes, with the recordings of two of its processes: this one, and one that ended.
     */
    std::unique_ptr<RunFolder> start(const char* dataFile, int number) {
        auto run = std::make_unique<RunFolder>();
        const bool isMade = !run->create(path(dataFile), session(number));
        const QString recording = run->path() + QStringLiteral("/a.uirec");
        const bool isAnnounced = isMade && !run->announce({run->path(), session(number), recording,
                                                           path("options.ini")});
        for (const bool isOurs : {true, false}) {
            RecordingBuilder builder;
            const qint64 process = isOurs ? QCoreApplication::applicationPid() : 0;
            builder.addProcess({{QStringLiteral("session"), session(number)},
                                {QStringLiteral("pid"), QString::number(process)}});
            const QString other = run->path() + QStringLiteral("/a-7.uirec");
            if (!isAnnounced || !builder.write(isOurs ? recording : other)) {
                return nullptr;
            }
        }
        return run;
    }

    static QStringList marksIn(const QString& recording) {
        QStringList marks;
        RecordingReader reader(recording);
        Frame frame;
        if (!reader.open()) {
            while (reader.next(frame)) {
                if (frame.type == RecordingFormat::FrameType::Mark) {
                    marks.append(*Uicov::Recording::decodeMark(frame.body));
                }
            }
        }
        return marks;
    }

    QStringList marks() const { return marksIn(m_run->path() + QStringLiteral("/a.uirec")); }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_runner = std::make_unique<CommandRunner>(QStringLiteral(UICOV_PROGRAM));
        m_runner->setWorkingFolder(m_folder->path());
        m_runner->setVariable(QStringLiteral("UICOV_RUN"), QString());
        m_runner->setVariable(QStringLiteral("UICOV_FILE"), QString());
        QSettings options(path("options.ini"), QSettings::IniFormat);
        options.setValue(QStringLiteral("host/session"), session(1));
        options.sync();
        m_run = start(".uicov", 1);
        QVERIFY(m_run);
    }

    void cleanup() {
        m_run.reset();
        TestLib::TestCase::cleanup();
    }

    void theRunBesideTheDataFileIsMarked() {
        QCOMPARE(mark({QStringLiteral("login")}), 0);
        QCOMPARE(mark({QStringLiteral("--"), QStringLiteral("--ünicode \"x\"")}), 0);
        QCOMPARE(mark({QStringLiteral("--end")}), 0);
        QCOMPARE(marks(), QStringList({QStringLiteral("login"), QStringLiteral("--ünicode \"x\""),
                                       QString()}));
        QCOMPARE(m_runner->errors(), QString());
        // The process that has ended is left alone.
        QCOMPARE(marksIn(m_run->path() + QStringLiteral("/a-7.uirec")), QStringList());
    }

    void onATerminalTheNextCommandIsNamed() {
        qunsetenv("UICOV_RUN");
        for (const bool ends : {false, true}) {
            TestLib::TerminalRunner terminal;
            QVERIFY(terminal.start(QStringLiteral(UICOV_PROGRAM),
                                   {QStringLiteral("mark"), QStringLiteral("-o"), path(".uicov"),
                                    ends ? QStringLiteral("--end") : QStringLiteral("login")},
                                   0));
            QCOMPARE(terminal.finish(), 0);
            const QString next = ends ? QStringLiteral("NAME, or end the application")
                                      : QStringLiteral("-o %1 --end").arg(path(".uicov"));
            QCOMPARE(terminal.output(),
                     QStringLiteral("uicov: next: uicov mark %1\r\n").arg(next).toUtf8());
        }
    }

    void processesStillToStartBeginInTheContext() {
        QCOMPARE(mark({QStringLiteral("a, b=@c")}), 0);
        QSettings settings(path("options.ini"), QSettings::IniFormat);
        QCOMPARE(settings.value(QStringLiteral("host/mark")).toString(), QStringLiteral("a, b=@c"));
        QCOMPARE(settings.value(QStringLiteral("host/session")).toString(), session(1));
    }

    /** As where each test starts the application anew: the last one has ended, the next is to come.
     */
    void betweenTwoProcessesARunCanBeMarked() {
        QVERIFY(QFile::remove(m_run->path() + QStringLiteral("/a.uirec")));
        QCOMPARE(mark({QStringLiteral("next")}), 0);
        QCOMPARE(m_runner->errors(), QString());
        QSettings settings(path("options.ini"), QSettings::IniFormat);
        QCOMPARE(settings.value(QStringLiteral("host/mark")).toString(), QStringLiteral("next"));
    }

    void whereLaterProcessesCannotBeToldItIsSaid() {
        QVERIFY(QFile::remove(path("options.ini")));
        QCOMPARE(mark({QStringLiteral("x")}), 1);
        QVERIFY2(m_runner->errors().endsWith(QStringLiteral("[setup-failed]\n")),
                 qPrintable(m_runner->errors()));
        QCOMPARE(marks(), QStringList{QStringLiteral("x")});
        QVERIFY(!QFile::exists(path("options.ini")));
        QVERIFY(QFile::remove(m_run->path() + QStringLiteral("/a.uirec")));
        QCOMPARE(mark({QStringLiteral("x")}), 1);
        QVERIFY(m_runner->errors().endsWith(QStringLiteral("[no-run-going]\n")));
        QCOMPARE(m_runner->errors().count(QLatin1Char('\n')), 1);
    }

    void fromInsideTheRunItIsFoundFromAnyFolder() {
        m_runner->setWorkingFolder(QStringLiteral("/"));
        QCOMPARE(mark({QStringLiteral("x")}), 1);
        m_runner->setVariable(QStringLiteral("UICOV_RUN"), m_run->path());
        m_runner->setVariable(QStringLiteral("UICOV_FILE"), QStringLiteral("other.uicov"));
        QCOMPARE(mark({QStringLiteral("y")}), 0);
        QCOMPARE(marks(), QStringList{QStringLiteral("y")});
    }

    void theOptionNamesTheDataFile() {
        const auto other = start("other.uicov", 2);
        QVERIFY(other);
        QCOMPARE(mark({QStringLiteral("-o"), QStringLiteral("other.uicov"), QStringLiteral("x")}),
                 0);
        QCOMPARE(marks(), QStringList());
        QCOMPARE(marksIn(other->path() + QStringLiteral("/a.uirec")),
                 QStringList{QStringLiteral("x")});
    }

    void withoutARunThereIsNothingToMark() {
        m_run.reset();
        QCOMPARE(mark({QStringLiteral("x")}), 1);
        QVERIFY(m_runner->errors().endsWith(QStringLiteral("[no-run-going]\n")));
        QCOMPARE(m_runner->errors().count(QLatin1Char('\n')), 1);
    }

    void ofTwoRunsNoneIsGuessed() {
        const auto other = start(".uicov", 2);
        QVERIFY(other);
        QCOMPARE(mark({QStringLiteral("x")}), 1);
        QVERIFY(m_runner->errors().contains(QStringLiteral("2 runs with the data file")));
        QCOMPARE(marks(), QStringList());
    }

    void oneNameOrTheEnd_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("nothing") << QStringList();
        QTest::newRow("two") << QStringList{QStringLiteral("a"), QStringLiteral("b")};
        QTest::newRow("empty") << QStringList{QString()};
        QTest::newRow("both") << QStringList{QStringLiteral("--end"), QStringLiteral("b")};
    }

    void oneNameOrTheEnd() {
        QFETCH(QStringList, arguments);
        QCOMPARE(mark(arguments), 1);
        QVERIFY(m_runner->errors().endsWith(QStringLiteral("[wrong-use]\n")));
        QCOMPARE(marks(), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestMarkCommand)
#include "tst_markcommand.moc"
