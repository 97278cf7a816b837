// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/datafile.h"
#include "testlib/commandrunner.h"
#include "testlib/cprogram.h"
#include "testlib/emulation.h"
#include "testlib/recordingbuilder.h"
#include "testlib/terminalrunner.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using TestLib::CommandRunner;
using TestLib::writeScript;
using Uicov::Runs::Run;
using Uicov::Store::DataFile;

class TestRunCommand : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_libraries;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<CommandRunner> m_runner;
    const QString m_application = QStringLiteral(FAKE_APPLICATION);

    QString path(const char* name) { return m_folder->filePath(QLatin1String(name)); }

    int run(const QStringList& arguments) {
        return m_runner->run(QStringList{QStringLiteral("run")} + arguments);
    }

    /** The fake application with arguments given as one text. */
    QStringList application(const char* arguments = "") {
        QStringList words{QStringLiteral("--"), m_application};
        return words + QString::fromLatin1(arguments).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    }

    QStringList folders() {
        return QDir(m_folder->path()).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    QVector<Run> runsIn(const char* name) {
        QVector<Run> runs;
        DataFile file;
        if (!file.open(path(name), Uicov::Store::Sql::Access::Read)) {
            const QStringList uuids = file.runs();
            for (const QString& uuid : uuids) {
                Run run;
                file.read(uuid, DataFile::Pictures::Leave, run);
                runs.append(run);
            }
        }
        return runs;
    }

    QStringList files() { return QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden); }

private Q_SLOTS:
    void initTestCase() {
        QVERIFY(QDir(m_libraries.path()).mkpath(QStringLiteral("plugins/generic")));
        for (const char* name :
             {"libqtuicontrols.so", "libqtuicontrolsquick.so", "libqtuicoverage.so",
              "libvorskhook.so", "libvorskqtwrapper.so", "plugins/generic/libvorskstarter.so"}) {
            QVERIFY(TestLib::buildC(QStringLiteral("void init_extension(void) {}"),
                                    m_libraries.filePath(QLatin1String(name)),
                                    {QStringLiteral("-shared"), QStringLiteral("-fPIC")}));
        }
        qputenv("UICOV_LIBDIR", QFile::encodeName(m_libraries.path()));
    }

    void init() {
        TestLib::TestCase::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_runner = std::make_unique<CommandRunner>(QStringLiteral(UICOV_PROGRAM));
        m_runner->setWorkingFolder(m_folder->path());
        for (const char* name : {"UICOV_FILE", "UICOV_CONTEXT", "UICOV_RUN"}) {
            m_runner->setVariable(QLatin1String(name), QString());
        }
    }

    void cleanup() { TestLib::TestCase::cleanup(); }

    void aRunEndsWithTheNextCommand() {
        QCOMPARE(run(application()), 0);
        QCOMPARE(files(), QStringList{QStringLiteral(".uicov")});
        QVERIFY(folders().isEmpty());
        const QStringList lines = m_runner->errors().split(QLatin1Char('\n'));
        QCOMPARE(lines.size(), 3);
        QVERIFY(lines.at(0).startsWith(QStringLiteral("uicov: recorded 17 elements in ")));
        QCOMPARE(lines.at(1), QStringLiteral("uicov: next: uicov report -m"));
        QCOMPARE(m_runner->output(), QString());
    }

    void theDashesCanBeLeftOut() {
        QCOMPARE(run({QStringLiteral("-o"), QStringLiteral("x.uicov"), m_application,
                      QStringLiteral("exit"), QStringLiteral("3")}),
                 3);
        QCOMPARE(files(), QStringList{QStringLiteral("x.uicov")});
    }

    void quietSaysNothing() {
        QCOMPARE(run(QStringList{QStringLiteral("-q")} + application()), 0);
        QCOMPARE(m_runner->errors(), QString());
    }

    void theExitCodeIsTheApplications() {
        QCOMPARE(run(application("exit 7")), 7);
        QVERIFY(m_runner->errors().contains(QStringLiteral("next: uicov report")));
        QCOMPARE(run(application("signal 11")), 128 + 11);
        QVERIFY(m_runner->errors().contains(QStringLiteral("ended by signal 11")));
    }

    void everyProcessIsARunOfOneSession() {
        QCOMPARE(
            run(QStringList{QStringLiteral("-o"), QStringLiteral("a b")} + application("child")),
            0);
        QVERIFY2(
            m_runner->errors().contains(QStringLiteral("recorded 34 elements of 2 processes in")),
            qPrintable(m_runner->errors()));
        QVERIFY(m_runner->errors().contains(QStringLiteral("next: uicov report -m 'a b'\n")));
        const QVector<Run> runs = runsIn("a b");
        QCOMPARE(runs.size(), 2);
        QCOMPARE(runs.at(0).session, runs.at(1).session);
        QCOMPARE(runs.at(0).session.size(), 36);
    }

    void theDataFileIsReplacedOrAddedTo() {
        QCOMPARE(run(application()), 0);
        const QString first = runsIn(".uicov").value(0).uuid;
        QCOMPARE(run(application()), 0);
        QCOMPARE(runsIn(".uicov").size(), 1);
        QVERIFY(runsIn(".uicov").at(0).uuid != first);
        QCOMPARE(run(QStringList{QStringLiteral("--append")} + application()), 0);
        QCOMPARE(runsIn(".uicov").size(), 2);
    }

    void aRunThatRecordedNothingReplacesNothing() {
        QCOMPARE(run(application()), 0);
        const QString uuid = runsIn(".uicov").value(0).uuid;
        QCOMPARE(run(application("empty")), 1);
        QCOMPARE(run({QStringLiteral("--"), QStringLiteral("true")}), 1);
        QCOMPARE(runsIn(".uicov").value(0).uuid, uuid);
        QCOMPARE(runsIn(".uicov").size(), 1);
        QVERIFY(folders().isEmpty());
    }

    void theRecordingCanBeKept() {
        QCOMPARE(run(QStringList{QStringLiteral("--keep-recording")} + application()), 0);
        QCOMPARE(files(),
                 QStringList({QStringLiteral(".uicov"), QStringLiteral("fakeapplication.uirec")}));
        QCOMPARE(run(QStringList{QStringLiteral("--recording"), QStringLiteral("my.uirec")} +
                     application("child")),
                 0);
        QCOMPARE(files(),
                 QStringList({QStringLiteral(".uicov"), QStringLiteral("fakeapplication.uirec"),
                              QStringLiteral("my-4711.uirec"), QStringLiteral("my.uirec")}));
    }

    void aRecordingThatEndedBeforeTheApplicationIsTold() {
        QCOMPARE(run(application("cut")), 0);
        QVERIFY2(m_runner->errors().contains(
                     QStringLiteral(": the recording ended before the application did, so that "
                                    "what it did later is missing: ")) &&
                     m_runner->errors().contains(QStringLiteral("[ended-abnormally]")) &&
                     m_runner->errors().contains(QStringLiteral("uicov: recorded ")),
                 qPrintable(m_runner->errors()));
        QCOMPARE(run(QStringList{QStringLiteral("--strict")} + application("cut")), 3);
        QCOMPARE(run(QStringList{QStringLiteral("--strict")} + application()), 0);
        QVERIFY2(!m_runner->errors().contains(QStringLiteral("warning")),
                 qPrintable(m_runner->errors()));
        // Of one that was killed the end is known.
        QCOMPARE(run(QStringList{QStringLiteral("--strict")} + application("cut signal 9")),
                 128 + 9);
        QVERIFY2(m_runner->errors().contains(QStringLiteral("killed, crashed or still runs")),
                 qPrintable(m_runner->errors()));
    }

    void everyProcessIsInTheDataFileWhateverTheRecordingIsCalled() {
        QCOMPARE(run(QStringList{QStringLiteral("--recording"), QStringLiteral("rec.bin")} +
                     application("child")),
                 0);
        QCOMPARE(runsIn(".uicov").size(), 2);
        QVERIFY(files().contains(QStringLiteral("rec.bin-4711.uirec")));
    }

    void whereTheDataFileCannotBeWrittenTheRecordingIsKept() {
        // Something else takes the place while the application runs.
        QVERIFY(writeScript(
            path("app"),
            QStringLiteral("#!/bin/sh\necho mine > .uicov\n\"%1\"\n").arg(m_application)));
        QCOMPARE(run({QStringLiteral("--"), QStringLiteral("./app")}), 1);
        QVERIFY2(m_runner->errors().contains(QStringLiteral("[output-foreign]")),
                 qPrintable(m_runner->errors()));
        QCOMPARE(folders().size(), 1);
        QVERIFY(m_runner->errors().contains(QStringLiteral("uicov combine -o .uicov-kept ")));
        QVERIFY(m_runner->errors().contains(folders().at(0)));
        QVERIFY(QFile::remove(path(".uicov")));
        QCOMPARE(m_runner->run({QStringLiteral("combine"), folders().at(0)}), 0);
        QCOMPARE(runsIn(".uicov").size(), 1);
        // The next run says that it is there.
        QCOMPARE(run(application()), 0);
        QVERIFY2(m_runner->errors().contains(QStringLiteral("an earlier run could not be")),
                 qPrintable(m_runner->errors()));
    }

    void whereTheDataFileCannotBeWrittenEveryKeptRecordingIsNamed() {
        QVERIFY(writeScript(
            path("app"),
            QStringLiteral("#!/bin/sh\necho mine > .uicov\n\"%1\" child\n").arg(m_application)));
        QCOMPARE(run({QStringLiteral("--recording"), QStringLiteral("a b.uirec"),
                      QStringLiteral("--"), QStringLiteral("./app")}),
                 1);
        QVERIFY2(m_runner->errors().endsWith(QStringLiteral(
                     "next: uicov combine -o .uicov-kept 'a b.uirec' 'a b-4711.uirec'\n")),
                 qPrintable(m_runner->errors()));
        QVERIFY(folders().isEmpty());
    }

    void whatACommandThatIsKilledHadRecordedIsFound() {
        QVERIFY(writeScript(
            path("app"),
            QStringLiteral("#!/bin/sh\n\"%1\"\nkill -KILL $PPID\n").arg(m_application)));
        QCOMPARE(run({QStringLiteral("--"), QStringLiteral("./app")}), -1);
        QCOMPARE(folders().size(), 1);
        QVERIFY(!QFile::exists(path(".uicov")));
        const QString folder = folders().at(0);
        // Nobody holds it, so there is nothing to mark.
        QCOMPARE(m_runner->run({QStringLiteral("mark"), QStringLiteral("x")}), 1);
        QVERIFY(m_runner->errors().endsWith(QStringLiteral("[no-run-going]\n")));
        QCOMPARE(run(application()), 0);
        QVERIFY2(m_runner->errors().contains(QStringLiteral("an earlier run could not be")),
                 qPrintable(m_runner->errors()));
        QVERIFY(m_runner->errors().contains(folder));
        QCOMPARE(m_runner->run({QStringLiteral("combine"), QStringLiteral("--append"), folder}), 0);
        QCOMPARE(runsIn(".uicov").size(), 2);
    }

    void controlCKeepsWhatWasRecorded() {
        QVERIFY(writeScript(
            path("app"),
            QStringLiteral("#!/bin/sh\n\"%1\"\necho ready\nexec cat\n").arg(m_application)));
        TestLib::TerminalRunner terminal;
        QVERIFY(terminal.start(QStringLiteral(UICOV_PROGRAM),
                               {QStringLiteral("run"), QStringLiteral("-o"), path("x.uicov"),
                                QStringLiteral("--"), path("app")}));
        QVERIFY2(terminal.readUntil("ready"), terminal.output().constData());
        terminal.type("\x03");
        QCOMPARE(terminal.finish(), 128 + SIGINT);
        const QVector<Run> runs = runsIn("x.uicov");
        QCOMPARE(runs.size(), 1);
        QCOMPARE(runs.at(0).elements.size(), std::size_t{17});
        QVERIFY(folders().isEmpty());
    }

    void labelsAndContextReachTheApplication() {
        const QStringList save =
            application() + QStringList{QStringLiteral("save"), path("saved.ini")};
        QCOMPARE(run(QStringList{QStringLiteral("--label"), QStringLiteral("a=1,2"),
                                 QStringLiteral("--label"), QStringLiteral("b=ü=\"x\" @"),
                                 QStringLiteral("--context"), QStringLiteral("a, b")} +
                     save),
                 0);
        QSettings settings(path("saved.ini"), QSettings::IniFormat);
        QCOMPARE(settings.value(QStringLiteral("host/context")).toString(), QStringLiteral("a, b"));
        // In a CI service the commit comes first.
        QCOMPARE(settings.value(QStringLiteral("host/labels"))
                     .toStringList()
                     .mid(settings.value(QStringLiteral("host/labels")).toStringList().size() - 2),
                 QStringList({QStringLiteral("a=1,2"), QStringLiteral("b=ü=\"x\" @")}));
        QCOMPARE(
            run(QStringList{QStringLiteral("--label"), QStringLiteral("noValue")} + application()),
            1);
        QVERIFY(m_runner->errors().contains(QStringLiteral("NAME=VALUE, not noValue")));
    }

    void whatIsThereSoFarCanBeReportedWhileTheRunGoes() {
        QVERIFY(writeScript(path("app"), QStringLiteral("#!/bin/sh\n\"%1\"\ntouch ready\n"
                                                        "while [ ! -e go ]; do sleep 0.05; done\n")
                                             .arg(m_application)));
        QProcess process;
        process.setWorkingDirectory(m_folder->path());
        process.start(QStringLiteral(UICOV_PROGRAM),
                      {QStringLiteral("run"), QStringLiteral("-o"), QStringLiteral("x.uicov"),
                       QStringLiteral("--"), QStringLiteral("./app")});
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path("ready")), 20000);
        QVERIFY(!QFile::exists(path("x.uicov")));
        QCOMPARE(m_runner->run({QStringLiteral("report"), QStringLiteral("x.uicov")}), 0);
        QVERIFY2(m_runner->errors().contains(
                     QStringLiteral("x.uicov: a run into it is still going; what it has recorded "
                                    "so far is counted")),
                 qPrintable(m_runner->errors()));
        const QString soFar = m_runner->output();
        QVERIFY(soFar.contains(QStringLiteral("TOTAL")));
        QFile go(path("go"));
        QVERIFY(go.open(QIODevice::WriteOnly));
        QVERIFY(process.waitForFinished());
        QCOMPARE(m_runner->run({QStringLiteral("report"), QStringLiteral("x.uicov")}), 0);
        QCOMPARE(m_runner->output(), soFar);
        QVERIFY(!m_runner->errors().contains(QStringLiteral("still going")));
    }

    void aRunThatAppendsIsReportedWithWhatIsThereAlready() {
        QCOMPARE(run(application()), 0);
        QVERIFY(writeScript(path("app"),
                            QStringLiteral("#!/bin/sh\n[ -z \"$1\" ] && \"%1\"\ntouch ready\n"
                                           "while [ ! -e go ]; do sleep 0.05; done\n")
                                .arg(m_application)));
        const auto runsSoFar = [this](const QStringList& options, const QStringList& arguments) {
            QFile::remove(path("ready"));
            QFile::remove(path("go"));
            QProcess process;
            process.setWorkingDirectory(m_folder->path());
            process.start(QStringLiteral(UICOV_PROGRAM),
                          QStringList{QStringLiteral("run")} + options +
                              QStringList{QStringLiteral("--"), QStringLiteral("./app")} +
                              arguments);
            [this] { QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path("ready")), 20000); }();
            const int code = m_runner->run({QStringLiteral("json")});
            const int runs = m_runner->output().count(QStringLiteral("\"uuid\""));
            QFile go(path("go"));
            go.open(QIODevice::WriteOnly);
            process.waitForFinished();
            return code == 0 ? runs : -1;
        };
        QCOMPARE(runsSoFar({QStringLiteral("--append")}, {}), 2);
        QCOMPARE(runsSoFar({}, {}), 1);
        QCOMPARE(runsSoFar({}, {QStringLiteral("records-nothing")}), -1);
        QVERIFY2(m_runner->errors().contains(QStringLiteral("has recorded nothing yet")),
                 qPrintable(m_runner->errors()));
    }

    void theCommitIsALabelOfTheRunUnlessTheUserNamesAnother() {
        // The folder is in no checkout, so that the service's variable decides.
        const QString commit = QStringLiteral("0123456789abcdef0123456789abcdef01234567");
        m_runner->setVariable(QStringLiteral("GITHUB_SHA"), commit);
        const auto labelsOf = [this](const QStringList& options) {
            const QString saved = path("saved.ini");
            QFile::remove(saved);
            run(options + application() + QStringList{QStringLiteral("save"), saved});
            return QSettings(saved, QSettings::IniFormat)
                .value(QStringLiteral("host/labels"))
                .toStringList();
        };
        QCOMPARE(labelsOf({QStringLiteral("--label"), QStringLiteral("a=1")}),
                 (QStringList{QStringLiteral("vcs.commit=") + commit, QStringLiteral("a=1")}));
        QCOMPARE(labelsOf({QStringLiteral("--label"), QStringLiteral("vcs.commit=other")}),
                 QStringList{QStringLiteral("vcs.commit=other")});
    }

    void aRecordingIsNoDataFile() {
        QCOMPARE(run(QStringList{QStringLiteral("-o"), QStringLiteral("x.uirec")} + application()),
                 1);
        QVERIFY(m_runner->errors().contains(
            QStringLiteral("to keep the recording use --recording x.uirec")));
        QVERIFY(files().isEmpty());
    }

    void theExtensionIsTheOneOfControlsUnlessTheClassicOneIsAskedFor() {
        m_runner->setVariable(QStringLiteral("UICOV_CLASSIC"), QString());
        const QStringList save =
            application() + QStringList{QStringLiteral("save"), path("saved.ini")};
        for (const bool isClassic : {false, true}) {
            QCOMPARE(
                run((isClassic ? QStringList{QStringLiteral("--classic")} : QStringList()) + save),
                0);
            const QSettings settings(path("saved.ini"), QSettings::IniFormat);
            QCOMPARE(settings.value(QStringLiteral("host/extension")).toString(),
                     m_libraries.filePath(isClassic ? QStringLiteral("libqtuicoverage.so")
                                                    : QStringLiteral("libqtuicontrols.so")));
            QVERIFY(QFile::remove(path("saved.ini")));
        }
    }

    void whatTheConfigurationNamesIsBlackedOut() {
        QFile configuration(path("uicov.toml"));
        QVERIFY(configuration.open(QIODevice::WriteOnly));
        QVERIFY(configuration.write("[redact]\npatterns = [\"account*\"]\n") > 0);
        configuration.close();
        const QStringList save =
            application() + QStringList{QStringLiteral("save"), path("saved.ini")};
        QCOMPARE(run(save), 0);
        const QString key = QStringLiteral("options/redact");
        QCOMPARE(QSettings(path("saved.ini"), QSettings::IniFormat).value(key).toString(),
                 QStringLiteral("account*"));
        QVERIFY(QFile::remove(path("saved.ini")));
        QCOMPARE(run(QStringList{QStringLiteral("--no-config")} + save), 0);
        QVERIFY(!QSettings(path("saved.ini"), QSettings::IniFormat).contains(key));
    }

    void theConfigurationIsWhatWasAskedFor() {
        const QStringList save =
            application() + QStringList{QStringLiteral("save"), path("saved.ini")};
        QCOMPARE(run(QStringList{QStringLiteral("--toolkit"), QStringLiteral("quick"),
                                 QStringLiteral("--screenshots"), QStringLiteral("--recording"),
                                 QStringLiteral("x.uirec")} +
                     save),
                 0);
        QSettings settings(path("saved.ini"), QSettings::IniFormat);
        QCOMPARE(settings.value(QStringLiteral("host/recording")).toString(), path("x.uirec"));
        QCOMPARE(settings.value(QStringLiteral("host/extension")).toString(),
                 m_libraries.filePath(QStringLiteral("libqtuicoverage.so")));
        QCOMPARE(settings.value(QStringLiteral("options/enabled")).toString(), QStringLiteral("1"));
        QCOMPARE(settings.value(QStringLiteral("options/qtwidgets")).toString(),
                 QStringLiteral("0"));
        QCOMPARE(settings.value(QStringLiteral("options/qtquick")).toString(), QStringLiteral("1"));
        QCOMPARE(settings.value(QStringLiteral("options/takeScreenshotsOfElements")).toString(),
                 QStringLiteral("1"));
        QCOMPARE(settings.value(QStringLiteral("host/session")).toString().size(), 36);
    }

    void variablesStandForOptions() {
        m_runner->setVariable(QStringLiteral("UICOV_TOOLKIT"), QStringLiteral("widgets"));
        m_runner->setVariable(QStringLiteral("UICOV_SCREENSHOTS"), QStringLiteral("1"));
        const QStringList save =
            application() + QStringList{QStringLiteral("save"), path("saved.ini")};
        QCOMPARE(run(save), 0);
        QSettings settings(path("saved.ini"), QSettings::IniFormat);
        QCOMPARE(settings.value(QStringLiteral("options/qtquick")).toString(), QStringLiteral("0"));
        QCOMPARE(settings.value(QStringLiteral("options/takeScreenshotsOfElements")).toString(),
                 QStringLiteral("1"));
    }

    void theTemporaryFolderIsGoneAfterwards() {
        const QString temporary = path("temporary");
        QVERIFY(QDir().mkdir(temporary));
        m_runner->setVariable(QStringLiteral("TMPDIR"), temporary);
        QCOMPARE(run(application("signal 9")), 128 + 9);
        QVERIFY(QDir(temporary).isEmpty());
    }

    void streamsAndArgumentsPassThrough() {
        QVERIFY(
            writeScript(path("app"), QStringLiteral("#!/bin/sh\nread line\necho \"out $line\"\n"
                                                    "echo err >&2\nfor a; do echo \"<$a>\"; done\n"
                                                    "exit 5\n")));
        m_runner->setInput("typed\n");
        QCOMPARE(
            run({QStringLiteral("--"), QStringLiteral("./app"), QStringLiteral("--help"),
                 QStringLiteral("a b"), QString(), QStringLiteral("--"), QStringLiteral("-o")}),
            5);
        QCOMPARE(m_runner->output(),
                 QStringLiteral("out typed\n<--help>\n<a b>\n<>\n<-->\n<-o>\n"));
        QVERIFY(m_runner->errors().startsWith(QStringLiteral("err\n")));
    }

    void anEarlierRecordingIsReplacedRightBeforeTheStart() {
        TestLib::RecordingBuilder recording;
        QVERIFY(recording.write(path("x.uirec")));
        const QStringList output{QStringLiteral("--recording"), QStringLiteral("x.uirec"),
                                 QStringLiteral("--")};
        QCOMPARE(run(output + QStringList{QStringLiteral("./none")}), 127);
        QVERIFY(QFile::exists(path("x.uirec"))); // nothing was started, nothing was lost
        QVERIFY(
            writeScript(path("app"), QStringLiteral("#!/bin/sh\n[ ! -e x.uirec ] && exit 6\n")));
        QCOMPARE(run(output + QStringList{QStringLiteral("./app")}), 6);
    }

    void anythingElseIsNotReplaced() {
        QVERIFY(writeScript(path("precious.txt"), QStringLiteral("years of work")));
        QVERIFY(writeScript(path("app"), QStringLiteral("#!/bin/sh\ntouch started\n")));
        QCOMPARE(run({QStringLiteral("-o"), QStringLiteral("precious.txt"), QStringLiteral("--"),
                      QStringLiteral("./app")}),
                 1);
        QVERIFY(m_runner->errors().contains(QStringLiteral("[output-foreign]")));
        QCOMPARE(run({QStringLiteral("--recording"), QStringLiteral("precious.txt"),
                      QStringLiteral("--"), QStringLiteral("./app")}),
                 1);
        QVERIFY(m_runner->errors().contains(QStringLiteral("[output-not-a-recording]")));
        QVERIFY(!QFile::exists(path("started")));
        QFile file(path("precious.txt"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("years of work"));
    }

    void nothingIsStartedWhereItCannotWork_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("name");
        const auto words = [](const char* text) {
            return QString::fromLatin1(text).split(QLatin1Char(' '));
        };
        QTest::newRow("not found") << words("-- ./none") << 127 << "application-missing";
        QTest::newRow("not executable") << words("-- ./") << 126 << "application-not-executable";
        QTest::newRow("output folder")
            << words("-o none/x.uicov -- /bin/true") << 1 << "output-not-writable";
        QTest::newRow("libraries") << words("--libdir . -- /bin/true") << 1 << "libraries-missing";
        QTest::newRow("missing and no libraries")
            << words("--libdir . -- ./none") << 127 << "application-missing";
    }

    void nothingIsStartedWhereItCannotWork() {
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, name);
        QCOMPARE(run(arguments), exitCode);
        QVERIFY2(m_runner->errors().endsWith(QLatin1Char('[') + name + QStringLiteral("]\n")),
                 qPrintable(m_runner->errors()));
        QCOMPARE(m_runner->errors().count(QLatin1Char('\n')), 1);
        QVERIFY(files().isEmpty());
    }

    void aMissingInterpreterIsTold() {
        QVERIFY(writeScript(path("app"), QStringLiteral("#!/no/such/interpreter\n")));
        QCOMPARE(run({QStringLiteral("--"), QStringLiteral("./app")}), 127);
        QVERIFY(m_runner->errors().contains(QStringLiteral("[application-not-started]")));
    }

    void aRunWithoutARecordingIsAnErrorWithItsCause() {
        QCOMPARE(run({QStringLiteral("--"), QStringLiteral("true")}), 1);
        QVERIFY(m_runner->errors().contains(
            QStringLiteral("true recorded nothing: it does not load Qt when it starts; ")));
        QVERIFY(m_runner->errors().contains(QStringLiteral("; next: uicov doctor /")));
        QCOMPARE(m_runner->errors().count(QLatin1Char('\n')), 1);
        QCOMPARE(run({QStringLiteral("--"), QStringLiteral("false")}), 1);
        QVERIFY(writeScript(path("app"), QStringLiteral("#!/bin/sh\nkill -TERM $$\n")));
        QCOMPARE(run({QStringLiteral("--"), QStringLiteral("./app")}), 128 + 15);
        // The starter of this installation is an empty file.
        QVERIFY2(m_runner->errors().contains(
                     QStringLiteral("libvorskstarter.so is no generic Qt plugin")),
                 qPrintable(m_runner->errors()));
    }

    void aFolderThatTheRunRemovedIsTheCause() {
        QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("sink")));
        QCOMPARE(run({QStringLiteral("--recording"), QStringLiteral("sink/app.uirec"),
                      QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
                      QStringLiteral("rm -r sink")}),
                 1);
        QVERIFY2(m_runner->errors().contains(
                     QStringLiteral("sh recorded nothing: the folder ") + path("sink") +
                     QStringLiteral(", which its recording was to stand in, "
                                    "was removed during the run; ")),
                 qPrintable(m_runner->errors()));
        QVERIFY(!m_runner->errors().contains(QStringLiteral("does not load Qt")));
        QCOMPARE(m_runner->errors().count(QLatin1Char('\n')), 1);
        // A folder that is still there is not the cause.
        QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("sink")));
        QCOMPARE(run({QStringLiteral("--recording"), QStringLiteral("sink/app.uirec"),
                      QStringLiteral("--"), QStringLiteral("true")}),
                 1);
        QVERIFY(m_runner->errors().contains(QStringLiteral("does not load Qt")));
    }

    void aFolderOfTheRunThatIsRemovedIsTheCause() {
        QCOMPARE(run({QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
                      QStringLiteral("rm -r .uicov.run-*")}),
                 1);
        QVERIFY2(m_runner->errors().contains(QStringLiteral("was removed during the run; ")),
                 qPrintable(m_runner->errors()));
    }

    void aRecordingThatTheRunCutShortIsTheCause() {
        QCOMPARE(
            run({QStringLiteral("--recording"), QStringLiteral("app.uirec"), QStringLiteral("--"),
                 QStringLiteral("sh"), QStringLiteral("-c"), QStringLiteral("true >app.uirec")}),
            1);
        QVERIFY2(m_runner->errors().contains(
                     QStringLiteral("sh recorded nothing: its recording ") + path("app.uirec") +
                     QStringLiteral(" is there, but was cut short or overwritten")),
                 qPrintable(m_runner->errors()));
        QVERIFY(!m_runner->errors().contains(QStringLiteral("does not load Qt")));
    }

    void whatTheDoctorFindsIsToldWhenThereIsNoRecording() {
        m_runner->setVariable(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        m_runner->setVariable(QStringLiteral("DISPLAY"), QString());
        QVERIFY(writeScript(path("app"), QStringLiteral("#!/bin/sh\nkill -ABRT $$\n")));
        QCOMPARE(run({QStringLiteral("--"), QStringLiteral("./app")}), 128 + SIGABRT);
        QVERIFY2(m_runner->errors().contains(QStringLiteral(
                     "app recorded nothing: QT_QPA_PLATFORM is xcb, but DISPLAY is not set; ")),
                 qPrintable(m_runner->errors()));
        m_runner->setVariable(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    }

    void anEmptyRecordingIsAnErrorWithItsFirstWarning() {
        QCOMPARE(run(application("empty")), 1);
        QVERIFY2(m_runner->errors().contains(
                     QStringLiteral("the first warning was: no extension today")),
                 qPrintable(m_runner->errors()));
        QCOMPARE(run(application("empty exit 4")), 4);
    }

    /** The terminal tells both; if the command told the application once more it would count two.
     */
    void controlCReachesTheApplicationOnce() {
        if (TestLib::isEmulated()) {
            QSKIP("a child of the emulator's, which has started others before, gets no terminal");
        }
        // Takes the first while the command stands still, since two that wait would become one;
        // then lets the command go on, hand on another signal behind it, and counts until then.
        QVERIFY(TestLib::buildC(
            QStringLiteral("#include <signal.h>\n"
                           "#include <stdio.h>\n"
                           "#include <sys/wait.h>\n"
                           "#include <unistd.h>\n"
                           "int main(void) {\n"
                           "    int count = 0;\n"
                           "    sigset_t set;\n"
                           "    sigemptyset(&set);\n"
                           "    sigaddset(&set, SIGINT);\n"
                           "    sigaddset(&set, SIGUSR1);\n"
                           "    sigprocmask(SIG_BLOCK, &set, 0);\n"
                           "    pid_t command = getppid();\n"
                           "    kill(command, SIGSTOP);\n"
                           "    puts(\"ready\");\n"
                           "    fflush(stdout);\n"
                           "    while (sigwaitinfo(&set, 0) == SIGINT) {\n"
                           "        if (count++ == 0 && fork() == 0) {\n"
                           "            return kill(command, SIGUSR1) + kill(command, SIGCONT);\n"
                           "        }\n"
                           "    }\n"
                           "    return 40 + count;\n"
                           "}\n"),
            path("app"), {QStringLiteral("-D_GNU_SOURCE")}));
        TestLib::TerminalRunner terminal;
        QVERIFY(terminal.start(QStringLiteral(UICOV_PROGRAM),
                               {QStringLiteral("run"), QStringLiteral("-o"), path("x.uicov"),
                                QStringLiteral("--"), path("app")}));
        QVERIFY2(terminal.readUntil("ready"), terminal.output().constData());
        terminal.type("\x03");
        QCOMPARE(terminal.finish(), 41);
    }
};

QTEST_GUILESS_MAIN(TestRunCommand)
#include "tst_runcommand.moc"
