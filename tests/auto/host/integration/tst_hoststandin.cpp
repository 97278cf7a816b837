// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/support/recordingparser.h"
#include "testlib/emulation.h"
#include "testlib/killingfilter.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QUuid>

#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

/*
 * The whole stand-in: an application of its own, brought under the host by its environment alone.
 */

namespace {

struct Run {
    int status = -1;
    bool crashed = false;
    QString output;
    QString errors;
};

QStringList namesOf(const RecordingParser& recording) {
    QStringList names;
    const auto messages = recording.messages();
    for (const auto& message : messages) {
        names.append(message.name);
    }
    return names;
}

} // namespace

class tst_HostStandIn : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void recordsAnApplication();
    void endsOfDeliveriesAreToldToWhoAsks();
    void applicationBehavesAsWithoutHost();
    void withoutConfigurationNothingHappens_data();
    void withoutConfigurationNothingHappens();
    void waysToEnd_data();
    void waysToEnd();
    void killedApplication_data();
    void killedApplication();
    void childProcess();
    void forkedChild();
    void secondApplicationInTheProcess();
    void extensionLogOnRequest();
    void faults_data();
    void faults();
    void oneOfTwoExtensionsIsFaulty();
    void extensionDeclines();
    void recordingCannotBeMade();
    void aPipeThatNobodyReadsIsNoPlaceForTheRecording();
    void nobodyReadsTheWarning();
    void aFilterThatKillsForWhatIsNotNeeded();
    void wrapperIsMissing();
    void wrapperThatEverybodyCanReplace();

private:
    void writeOptions(const QString& extension);
    Run run(const QString& way = QStringLiteral("return"));
    RecordingParser recording() const { return RecordingParser::parseFile(m_recording); }

    QScopedPointer<QTemporaryDir> m_dir;
    QString m_options;
    QString m_recording;
    QProcessEnvironment m_environment;
};

void tst_HostStandIn::init() {
    TestCase::init();
    m_dir.reset(new QTemporaryDir);
    m_options = m_dir->filePath(QStringLiteral("host.ini"));
    m_recording = m_dir->filePath(QStringLiteral("run.uirec"));
    m_environment = QProcessEnvironment::systemEnvironment();
    m_environment.insert(QStringLiteral("QT_PLUGIN_PATH"),
                         TestLib::pluginPath(QStringLiteral(PLUGIN_PATH)));
    m_environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("vorsk"));
    m_environment.insert(QStringLiteral("VORSK_OPTIONS_FILE"), m_options);
    // Qt says a line when it has to make up one.
    m_environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_dir->path());
    writeOptions(QStringLiteral(TEST_EXTENSION));
}

void tst_HostStandIn::cleanup() {
    m_dir.reset();
    TestCase::cleanup();
}

void tst_HostStandIn::writeOptions(const QString& extension) {
    QFile file(m_options);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QStringLiteral("[host]\nextension=%1\nrecording=%2\nsession=the-session\n"
                              "context=nightly\nmark=first\nlabels=branch=main, \"a=1, 2\"\n"
                              "[options]\nenabled=1, 1\nqtwidgets=1\n")
                   .arg(extension, m_recording)
                   .toUtf8());
}

Run tst_HostStandIn::run(const QString& way) {
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(QStringLiteral(PROBE), {way});
    process.waitForFinished(60000);
    return {process.exitCode(), process.exitStatus() == QProcess::CrashExit,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

void tst_HostStandIn::endsOfDeliveriesAreToldToWhoAsks() {
    m_environment.insert(QStringLiteral("TEST_EXTENSION_ASKS_FOR_ENDS"), QStringLiteral("1"));
    const Run result = run();
    QCOMPARE(result.errors, QString());
    QCOMPARE(namesOf(recording()),
             (QStringList{QStringLiteral("initialize"), QStringLiteral("ends are told"),
                          QStringLiteral("press"), QStringLiteral("end of press"),
                          QStringLiteral("press"), QStringLiteral("end of press"),
                          QStringLiteral("finish"), QStringLiteral("destroyed")}));
}

void tst_HostStandIn::recordsAnApplication() {
    const Run result = run();
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 3);
    const RecordingParser parsed = recording();
    QCOMPARE(parsed.error, QString());
    QCOMPARE(namesOf(parsed), (QStringList{QStringLiteral("initialize"), QStringLiteral("press"),
                                           QStringLiteral("press"), QStringLiteral("finish"),
                                           QStringLiteral("destroyed")}));
    QCOMPARE(parsed.messages().first().channel, 1);
    QCOMPARE(parsed.messages().first().arguments,
             (QVariantList{QStringLiteral("libhosttestextension"), QStringLiteral(TEST_EXTENSION),
                           QVariantList{QStringLiteral("1"), QStringLiteral("1")}, false, true}));
    QCOMPARE(parsed.messages()[1].arguments, QVariantList{QStringLiteral("button")});
    QCOMPARE(parsed.logs(),
             (QStringList{QStringLiteral("info ready"), QStringLiteral("warning careful"),
                          QStringLiteral("info gone")}));
    QCOMPARE(parsed.messagesAccordingToEnd(), qint64(5));

    QCOMPARE(parsed.processValue(QStringLiteral("application")), QStringLiteral("hostprobe"));
    QCOMPARE(parsed.processValue(QStringLiteral("executable")),
             QFileInfo(QStringLiteral(PROBE)).canonicalFilePath());
    QVERIFY(parsed.processValue(QStringLiteral("pid")).toInt() > 1);
    QVERIFY(!QUuid(parsed.processValue(QStringLiteral("run"))).isNull());
    QCOMPARE(parsed.processValue(QStringLiteral("run")).size(), 36);
    QCOMPARE(parsed.processValue(QStringLiteral("session")), QStringLiteral("the-session"));
    QCOMPARE(parsed.processValue(QStringLiteral("context")), QStringLiteral("nightly"));
    QCOMPARE(parsed.processValue(QStringLiteral("extension")),
             QStringLiteral("libhosttestextension"));
    QCOMPARE(parsed.processValue(QStringLiteral("label.branch")), QStringLiteral("main"));
    QCOMPARE(parsed.processValue(QStringLiteral("label.a")), QStringLiteral("1, 2"));
    QVERIFY(parsed.processValue(QStringLiteral("clock")).toLongLong() > 0);
    // The context that was current already begins right behind the Process frame.
    QCOMPARE(parsed.frames.at(1).type, 4);
    QCOMPARE(parsed.frames.at(1).body, QByteArray("\0\0\0\5first", 9));
    QCOMPARE(parsed.processValue(QStringLiteral("qt-version")), QString::fromLatin1(qVersion()));
    QCOMPARE(parsed.processValue(QStringLiteral("platform")), QGuiApplication::platformName());
    QVERIFY(!parsed.processValue(QStringLiteral("locale")).isEmpty());
    QCOMPARE(parsed.processValue(QStringLiteral("architecture")), QSysInfo::buildAbi());
    const QDateTime started =
        QDateTime::fromString(parsed.processValue(QStringLiteral("started")), Qt::ISODate);
    QVERIFY(started.isValid());
    QCOMPARE(started.timeSpec(), Qt::UTC);
}

void tst_HostStandIn::applicationBehavesAsWithoutHost() {
    const Run with = run();
    m_environment.remove(QStringLiteral("QT_QPA_GENERIC_PLUGINS"));
    const Run without = run();
    QCOMPARE(with.output, QStringLiteral("clicks 1 deliveries yes\n"));
    QCOMPARE(with.output, without.output);
    QCOMPARE(with.errors, without.errors);
    QCOMPARE(with.status, without.status);
}

void tst_HostStandIn::withoutConfigurationNothingHappens_data() {
    QTest::addColumn<bool>("isSet");
    QTest::newRow("not set") << false;
    QTest::newRow("empty") << true;
}

void tst_HostStandIn::withoutConfigurationNothingHappens() {
    QFETCH(bool, isSet);
    m_environment.remove(QStringLiteral("VORSK_OPTIONS_FILE"));
    if (isSet) {
        m_environment.insert(QStringLiteral("VORSK_OPTIONS_FILE"), QString());
    }
    const Run result = run();
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QStringLiteral("clicks 1 deliveries yes\n"));
    QCOMPARE(result.status, 3);
    QVERIFY(!QFile::exists(m_recording));
}

void tst_HostStandIn::waysToEnd_data() {
    QTest::addColumn<bool>("inOrder");
    QTest::newRow("return") << true;
    QTest::newRow("exit-in-handler") << true;
    QTest::newRow("never-destroyed") << true;
    QTest::newRow("quick-exit") << true;
    QTest::newRow("_exit") << false;
}

void tst_HostStandIn::waysToEnd() {
    QFETCH(bool, inOrder);
    const Run result = run(QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 3);
    const RecordingParser parsed = recording();
    QCOMPARE(parsed.error, QString());
    QCOMPARE(parsed.hasEnd(), inOrder);
    QCOMPARE(namesOf(parsed).count(QStringLiteral("press")), 2);
    QCOMPARE(namesOf(parsed).count(QStringLiteral("finish")), inOrder ? 1 : 0);
    if (inOrder) {
        QCOMPARE(parsed.messagesAccordingToEnd(), qint64(parsed.messages().size()));
    }
}

void tst_HostStandIn::killedApplication_data() {
    QTest::addColumn<QString>("way");
    for (const char* way : {"kill", "terminate", "abort"}) {
        QTest::newRow(way) << QString::fromLatin1(way);
    }
}

void tst_HostStandIn::killedApplication() {
    QFETCH(QString, way);
    const Run result = run(way);
    QVERIFY(result.crashed);
    const RecordingParser parsed = recording();
    QCOMPARE(parsed.error, QString());
    QVERIFY(!parsed.hasEnd());
    QCOMPARE(namesOf(parsed), (QStringList{QStringLiteral("initialize"), QStringLiteral("press"),
                                           QStringLiteral("press")}));
}

void tst_HostStandIn::childProcess() {
    const Run result = run(QStringLiteral("child"));
    QCOMPARE(result.errors, QString());
    const QStringList files =
        QDir(m_dir->path()).entryList({QStringLiteral("*.uirec")}, QDir::Files, QDir::Name);
    QCOMPARE(files.size(), 2);
    const RecordingParser parent = recording();
    const RecordingParser child = RecordingParser::parseFile(m_dir->filePath(files.first()));
    QVERIFY(files.first().startsWith(QStringLiteral("run-")));
    QCOMPARE(files.first(),
             QStringLiteral("run-%1.uirec").arg(child.processValue(QStringLiteral("pid"))));
    for (const RecordingParser& parsed : {parent, child}) {
        QCOMPARE(parsed.error, QString());
        QVERIFY(parsed.hasEnd());
        QCOMPARE(namesOf(parsed).count(QStringLiteral("press")), 2);
        QCOMPARE(parsed.processValue(QStringLiteral("session")), QStringLiteral("the-session"));
    }
    QVERIFY(parent.processValue(QStringLiteral("run")) !=
            child.processValue(QStringLiteral("run")));
}

void tst_HostStandIn::forkedChild() {
    const Run result = run(QStringLiteral("fork"));
    QCOMPARE(result.errors, QString());
    const RecordingParser parsed = recording();
    QCOMPARE(parsed.error, QString());
    QCOMPARE(namesOf(parsed).count(QStringLiteral("press")), 2);
    QCOMPARE(namesOf(parsed).count(QStringLiteral("finish")), 1);
    QCOMPARE(parsed.messagesAccordingToEnd(), qint64(5));
    QCOMPARE(QDir(m_dir->path()).entryList({QStringLiteral("*.uirec")}).size(), 1);
}

void tst_HostStandIn::secondApplicationInTheProcess() {
    const Run result = run(QStringLiteral("twice"));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QStringLiteral("clicks 1 deliveries yes\nclicks 1 deliveries yes\n"));
    const RecordingParser parsed = recording();
    QCOMPARE(parsed.error, QString());
    QCOMPARE(namesOf(parsed).count(QStringLiteral("initialize")), 1);
    QCOMPARE(namesOf(parsed).count(QStringLiteral("press")), 4);
    QCOMPARE(namesOf(parsed).count(QStringLiteral("finish")), 1);
    QVERIFY(parsed.hasEnd());
}

void tst_HostStandIn::extensionLogOnRequest() {
    m_environment.insert(QStringLiteral("QT_LOGGING_RULES"),
                         QStringLiteral("vorsk.extension=true"));
    m_environment.insert(QStringLiteral("QT_MESSAGE_PATTERN"),
                         QStringLiteral("%{category} %{type} %{message}"));
    // Qt has forgotten the pattern when the extension's own objects go.
    const QString expected = QStringLiteral("^vorsk.extension info ready\n"
                                            "vorsk.extension warning careful\n"
                                            ".*gone\n$");
    const QString errors = run().errors;
    QVERIFY2(QRegularExpression(expected).match(errors).hasMatch(), qPrintable(errors));
}

void tst_HostStandIn::faults_data() {
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QString>("error");
    QTest::newRow("not there") << QStringLiteral("/none/libx.so")
                               << QStringLiteral("^extension-missing: there is no extension "
                                                 "library /none/libx.so; correct \"extension\" "
                                                 "in the options file\n$");
    QTest::newRow("not a library") << QStringLiteral(NOT_A_LIBRARY)
                                   << QStringLiteral("^extension-not-loadable: the extension "
                                                     "library .* cannot be loaded: .*; it has to "
                                                     "be built for this application's "
                                                     "architecture and Qt\n$");
    QTest::newRow("without entry") << QStringLiteral(HOOK_LIBRARY)
                                   << QStringLiteral("^extension-no-entry: the library .* has no "
                                                     "\"init_extension\", so it is not an "
                                                     "extension; .*\n$");
    QTest::newRow("none named") << QString()
                                << QStringLiteral("^options-incomplete: .* \"extension\" .*\n$");
    QTest::newRow("unknown key") << QStringLiteral("/x.so\nsesion=1")
                                 << QStringLiteral("^options-unknown: .* \"sesion\"; .*\n$");
    QTest::newRow("line break in a path")
        << QStringLiteral("\"/a\\nb.so\"")
        << QStringLiteral("^extension-missing: there is no extension library /a\\\\x0ab.so; .*\n$");
}

void tst_HostStandIn::faults() {
    QFETCH(QString, extension);
    QFETCH(QString, error);
    writeOptions(extension);
    m_environment.insert(QStringLiteral("QT_MESSAGE_PATTERN"), QStringLiteral("%{message}"));
    const Run result = run();
    QVERIFY2(QRegularExpression(error).match(result.errors).hasMatch(), qPrintable(result.errors));
    QCOMPARE(result.errors.count(QLatin1Char('\n')), 1);
    QCOMPARE(result.output, QStringLiteral("clicks 1 deliveries yes\n"));
    QCOMPARE(result.status, 3);
    QVERIFY(!QFile::exists(m_recording));
}

void tst_HostStandIn::oneOfTwoExtensionsIsFaulty() {
    writeOptions(QStringLiteral("/none/libx.so, ") + QStringLiteral(TEST_EXTENSION));
    const Run result = run();
    QVERIFY(result.errors.contains(QStringLiteral("extension-missing: ")));
    QCOMPARE(result.errors.count(QLatin1Char('\n')), 1);
    QCOMPARE(namesOf(recording()).count(QStringLiteral("press")), 2);
    QCOMPARE(recording().processValue(QStringLiteral("extension")),
             QStringLiteral("libhosttestextension"));
}

void tst_HostStandIn::extensionDeclines() {
    m_environment.insert(QStringLiteral("TEST_EXTENSION_DECLINES"), QStringLiteral("1"));
    const Run result = run();
    QVERIFY2(result.errors.contains(QStringLiteral("extension-declined: init_extension of ")),
             qPrintable(result.errors));
    QCOMPARE(result.status, 3);
    QVERIFY(recording().hasEnd());
}

void tst_HostStandIn::recordingCannotBeMade() {
    m_recording = m_dir->filePath(QStringLiteral("none/run.uirec"));
    writeOptions(QStringLiteral(TEST_EXTENSION));
    const Run result = run();
    QVERIFY2(result.errors.contains(QStringLiteral("recording-not-made: ")),
             qPrintable(result.errors));
    QCOMPARE(result.errors.count(QLatin1Char('\n')), 1);
    QCOMPARE(result.output, QStringLiteral("clicks 1 deliveries yes\n"));
    QCOMPARE(result.status, 3);
}

/** Opening it would hang, and writing to it end the application or hang. */
void tst_HostStandIn::aPipeThatNobodyReadsIsNoPlaceForTheRecording() {
    QCOMPARE(::mkfifo(QFile::encodeName(m_recording).constData(), 0600), 0);
    const Run result = run();
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 3);
    const QStringList beside =
        QDir(m_dir->path()).entryList({QStringLiteral("run-*.uirec")}, QDir::Files);
    QCOMPARE(beside.size(), 1);
    const RecordingParser parsed = RecordingParser::parseFile(m_dir->filePath(beside.first()));
    QCOMPARE(parsed.error, QString());
    QVERIFY(parsed.hasEnd());
    QCOMPARE(namesOf(parsed).count(QStringLiteral("press")), 2);
}

/** The one line that is said must not end an application that would have said nothing. */
void tst_HostStandIn::nobodyReadsTheWarning() {
    m_recording = m_dir->filePath(QStringLiteral("none/run.uirec"));
    writeOptions(QStringLiteral(TEST_EXTENSION));
    int ends[2];
    QCOMPARE(::pipe2(ends, O_CLOEXEC), 0);
    ::close(ends[0]);
    class Unread : public QProcess {
    public:
        int end = -1;

    protected:
        void setupChildProcess() override {
            ::dup2(end, STDERR_FILENO);
            static_cast<void>(::signal(SIGPIPE, SIG_DFL));
        }
    } process;
    process.end = ends[1];
    process.setProcessEnvironment(m_environment);
    process.start(QStringLiteral(PROBE), {QStringLiteral("return")});
    QVERIFY(process.waitForFinished(60000));
    ::close(ends[1]);
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 3);
    QCOMPARE(process.readAllStandardOutput(), QByteArray("clicks 1 deliveries yes\n"));
}

void tst_HostStandIn::aFilterThatKillsForWhatIsNotNeeded() {
    if (TestLib::isEmulated()) {
        QSKIP("the emulator would be filtered");
    }
    class Filtered : public QProcess {
    protected:
        void setupChildProcess() override {
            if (!TestLib::killOn({__NR_fallocate, __NR_ftruncate, __NR_flock, __NR_pwritev})) {
                ::_exit(99);
            }
        }
    };
    Filtered process;
    process.setProcessEnvironment(m_environment);
    process.start(QStringLiteral(PROBE), {QStringLiteral("return")});
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.readAllStandardError(), QByteArray());
    QCOMPARE(process.exitCode(), 3);
    const RecordingParser parsed = recording();
    QCOMPARE(parsed.error, QString());
    QCOMPARE(parsed.messagesAccordingToEnd(), qint64(5));
}

void tst_HostStandIn::wrapperIsMissing() {
    // The plugin alone, in a folder of its own.
    const QString folder = m_dir->filePath(QStringLiteral("lib/plugins/generic"));
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(QFile::copy(QStringLiteral(STARTER), folder + QStringLiteral("/libvorskstarter.so")));
    m_environment.insert(QStringLiteral("QT_PLUGIN_PATH"),
                         TestLib::pluginPath(m_dir->filePath(QStringLiteral("lib/plugins"))));
    const Run result = run();
    QVERIFY2(result.errors.contains(QStringLiteral("wrapper-not-loadable: cannot load ")),
             qPrintable(result.errors));
    QVERIFY(result.errors.contains(QStringLiteral("lib/libvorskqtwrapper.so: ")));
    QCOMPARE(result.errors.count(QLatin1Char('\n')), 1);
    QCOMPARE(result.output, QStringLiteral("clicks 1 deliveries yes\n"));
    QCOMPARE(result.status, 3);
}

void tst_HostStandIn::wrapperThatEverybodyCanReplace() {
    const QString folder = m_dir->filePath(QStringLiteral("lib/plugins/generic"));
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(QFile::copy(QStringLiteral(STARTER), folder + QStringLiteral("/libvorskstarter.so")));
    QFile wrapper(m_dir->filePath(QStringLiteral("lib/libvorskqtwrapper.so")));
    QVERIFY(wrapper.open(QIODevice::WriteOnly));
    QVERIFY(wrapper.setPermissions(QFile::Permissions(0x7777)));
    m_environment.insert(QStringLiteral("QT_PLUGIN_PATH"),
                         TestLib::pluginPath(m_dir->filePath(QStringLiteral("lib/plugins"))));
    const Run result = run();
    QVERIFY2(result.errors.contains(QStringLiteral("wrapper-unsafe: ")), qPrintable(result.errors));
    QCOMPARE(result.errors.count(QLatin1Char('\n')), 1);
    QCOMPARE(result.output, QStringLiteral("clicks 1 deliveries yes\n"));
    QCOMPARE(result.status, 3);
}

QTEST_MAIN(tst_HostStandIn)
#include "tst_hoststandin.moc"
