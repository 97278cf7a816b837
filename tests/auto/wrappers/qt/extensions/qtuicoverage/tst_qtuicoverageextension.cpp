// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtuicoverageextension.h"
#include "testlib/fakehook.h"
#include "testlib/fakehost.h"
#include "testlib/testcase.h"
#include "tracking/environment.h"

#include <QProcess>
#include <QPushButton>
#include <QTest>

#include <memory>
#include <thread>
#include <vector>

using Vorsk::QtWrapper::QtUiCoverageExtension;

namespace {

constexpr char variable[] = "VORSK_GUI_COVERAGE";
constexpr int imageChanged = 5;

using Values = std::vector<std::string>;

} // namespace

Q_DECLARE_METATYPE(Values)

// NOLINTBEGIN(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp): the sanitizer's name
/** Elements live until the process ends: to a leak checker, those of this process are lost. */
extern "C" Q_DECL_EXPORT const char* __lsan_default_suppressions() {
    return "leak:QtUiCoverageExtension::eventCallback";
}
// NOLINTEND(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)

/** There is one extension for the process, so each test begins with what the one before left. */
class tst_QtUiCoverageExtension : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        m_extension = QtUiCoverageExtension::instance(&m_host);
        Vorsk::Extension* other = nullptr;
        std::thread thread([&] { other = QtUiCoverageExtension::instance(&m_host); });
        thread.join();
        QCOMPARE(other, m_extension);
        QVERIFY(m_extension->name.empty());
        QVERIFY(m_extension->path.empty());
        QCOMPARE(m_extension->options, nullptr);
    }

    void init() {
        TestCase::init();
        qputenv(variable, "1");
        m_options.options.clear();
        m_context.registrations.clear();
        m_host.fakeLogger.lines.clear();
        m_extension->options = &m_options;
    }

    void cleanup() {
        m_hook.messages.clear();
        TestCase::cleanup();
    }

    // First: the trackers take pictures until the extension has been active.
    void whatItKeepsWhileInactive() {
        set("qtwidgets", {"1"});
        m_extension->initialize(&m_context);
        QVERIFY(m_context.registrations.isEmpty());
        // The options of the toolkits are kept nevertheless.
        set("enabled", {"1"});
        set("qtwidgets", {});
        set("qtquick", {"1"});
        set("takeScreenshotsOfElements", {"1"});
        m_extension->initialize(&m_context);
        QCOMPARE(m_context.registrations.size(), 1);
        QCOMPARE(recordsOfAShow(), 0);
    }

    void inactiveUnlessTheEnvironmentSaysExactlyOne_data() {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<bool>("active");
        QTest::newRow("unset") << QByteArray() << false;
        QTest::newRow("empty") << QByteArray("") << false;
        QTest::newRow("true") << QByteArray("true") << false;
        QTest::newRow("01") << QByteArray("01") << false;
        QTest::newRow("space in front") << QByteArray(" 1") << false;
        QTest::newRow("space behind") << QByteArray("1 ") << false;
        QTest::newRow("0") << QByteArray("0") << false;
        QTest::newRow("not of the locale") << QByteArray("1\xFF") << false;
        QTest::newRow("1") << QByteArray("1") << true;
    }

    void inactiveUnlessTheEnvironmentSaysExactlyOne() {
        QFETCH(QByteArray, value);
        QFETCH(bool, active);
        set("enabled", {"1"});
        set("qtwidgets", {"1"});
        set("qtquick", {"1"});
        if (value.isNull()) {
            qunsetenv(variable);
        } else {
            qputenv(variable, value);
        }
        m_extension->initialize(&m_context);
        QCOMPARE(m_context.registrations.size(), active ? 1 : 0);
        QCOMPARE(m_host.fakeLogger.lines,
                 active ? QStringList{QStringLiteral(
                              "info: Registered to track GUI coverage information.")}
                        : QStringList());
        QCOMPARE(QtUiCoverageExtension::instance(&m_host), m_extension);
    }

    void activeOnlyWithTheOptions_data() {
        QTest::addColumn<Values>("enabled");
        QTest::addColumn<Values>("qtwidgets");
        QTest::addColumn<Values>("qtquick");
        QTest::addColumn<bool>("active");
        const Values on{"1"};
        const Values off{"0"};
        const Values absent; // set() leaves a key without values out
        QTest::newRow("all") << on << on << on << true;
        QTest::newRow("widgets") << on << on << absent << true;
        QTest::newRow("quick") << on << absent << on << true;
        QTest::newRow("no toolkit") << on << absent << absent << false;
        QTest::newRow("toolkits off") << on << off << off << false;
        QTest::newRow("not enabled") << absent << on << on << false;
        QTest::newRow("enabled off") << off << on << on << false;
        QTest::newRow("enabled twice") << Values{"1", "1"} << on << on << false;
        QTest::newRow("enabled true") << Values{"true"} << on << on << false;
        QTest::newRow("enabled empty") << Values{""} << on << on << false;
        QTest::newRow("enabled with a space") << Values{"1 "} << on << on << false;
        QTest::newRow("widgets twice") << on << Values{"1", "1"} << absent << false;
        QTest::newRow("quick 1 and 0") << on << absent << Values{"1", "0"} << false;
    }

    void activeOnlyWithTheOptions() {
        QFETCH(Values, enabled);
        QFETCH(Values, qtwidgets);
        QFETCH(Values, qtquick);
        QFETCH(bool, active);
        set("enabled", enabled);
        set("qtwidgets", qtwidgets);
        set("qtquick", qtquick);
        m_extension->initialize(&m_context);
        QCOMPARE(m_context.registrations.size(), active ? 1 : 0);
        QCOMPARE(m_host.fakeLogger.lines.size(), active ? 1 : 0);
        if (active) {
            QCOMPARE(m_context.registrations.first().cls, &QObject::staticMetaObject);
            QVERIFY(m_context.registrations.first().callback != nullptr);
        }
    }

    void keyWithoutValuesIsOff() {
        m_options.options["enabled"] = {};
        set("qtwidgets", {"1"});
        m_extension->initialize(&m_context);
        QVERIFY(m_context.registrations.isEmpty());
    }

    void eventsReachTheWidgetsTrackerOnlyWhenItIsOn_data() {
        QTest::addColumn<Values>("qtwidgets");
        QTest::addColumn<Values>("qtquick");
        QTest::addColumn<bool>("reached");
        const Values on{"1"};
        QTest::newRow("widgets") << on << Values() << true;
        QTest::newRow("quick") << Values() << on << false;
        QTest::newRow("both") << on << on << true;
    }

    void eventsReachTheWidgetsTrackerOnlyWhenItIsOn() {
        QFETCH(Values, qtwidgets);
        QFETCH(Values, qtquick);
        QFETCH(bool, reached);
        set("enabled", {"1"});
        set("qtwidgets", qtwidgets);
        set("qtquick", qtquick);
        m_extension->initialize(&m_context);
        QCOMPARE(recordsOfAShow() > 0, reached);
    }

    void screenshotsOnlyWithASingleOne_data() {
        QTest::addColumn<Values>("values");
        QTest::addColumn<bool>("pictures");
        QTest::newRow("1") << Values{"1"} << true;
        QTest::newRow("absent") << Values() << false;
        QTest::newRow("0") << Values{"0"} << false;
        QTest::newRow("true") << Values{"true"} << false;
        QTest::newRow("1 and 1") << Values{"1", "1"} << false;
        QTest::newRow("1 again") << Values{"1"} << true;
    }

    void screenshotsOnlyWithASingleOne() {
        QFETCH(Values, values);
        QFETCH(bool, pictures);
        set("enabled", {"1"});
        set("qtwidgets", {"1"});
        set("takeScreenshotsOfElements", values);
        m_extension->initialize(&m_context);
        QCOMPARE(recordsOfAShow(imageChanged), pictures ? 1 : 0);
    }

    void trackerThatIsOffGetsTheScreenshotSettingAsWell_data() {
        QTest::addColumn<Values>("values");
        QTest::addColumn<int>("pictures");
        QTest::newRow("on") << Values{"1"} << 1;
        QTest::newRow("off") << Values{"0"} << 0;
    }

    void trackerThatIsOffGetsTheScreenshotSettingAsWell() {
        QFETCH(Values, values);
        QFETCH(int, pictures);
        set("enabled", {"1"});
        set("qtquick", {"1"});
        set("takeScreenshotsOfElements", values);
        m_extension->initialize(&m_context);
        const Vorsk::WrapperContext::EventCallback callback =
            m_context.registrations.first().callback;
        // Turns the tracker on and, for want of "enabled", goes no further.
        m_options.options.clear();
        set("qtwidgets", {"1"});
        m_extension->initialize(&m_context);
        QCOMPARE(m_context.registrations.size(), 1);
        QCOMPARE(recordsOfAShow(imageChanged, callback), pictures);
    }

    void laterHostGetsTheMessages() {
        TestLib::FakeExtensionHost other;
        QCOMPARE(QtUiCoverageExtension::instance(&other), m_extension);
        set("enabled", {"1"});
        set("qtwidgets", {"1"});
        m_extension->initialize(&m_context);
        QCOMPARE(other.fakeLogger.lines.size(), 1);
        QVERIFY(m_host.fakeLogger.lines.isEmpty());
        QtUiCoverageExtension::instance(&m_host);
    }

    void finishDoesNothing() {
        set("enabled", {"1"});
        set("qtwidgets", {"1"});
        m_extension->initialize(&m_context);
        m_extension->finish();
        QVERIFY(recordsOfAShow() > 0);
    }

    void surroundingsMayEndFirst_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("the application object ends before the extension")
            << QStringList{QStringLiteral("application-first")};
        QTest::newRow("events arrive after the extension's destruction")
            << QStringList{QStringLiteral("late-event")};
    }

    void surroundingsMayEndFirst() {
        QFETCH(QStringList, arguments);
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        // The program leaves everything where it is.
        environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(UICOV_EXTENSION_EXIT), arguments);
        QVERIFY(process.waitForFinished());
        const QByteArray output = process.readAll();
        QVERIFY2(process.exitStatus() == QProcess::NormalExit, output.constData());
        QVERIFY2(process.exitCode() == 0, output.constData());
        QVERIFY2(output.endsWith("done\n"), output.constData());
    }

    void theFirstCallMayComeOnAnyThreadAndAtAnyTime_data() {
        QTest::addColumn<QString>("how");
        for (const char* how :
             {"other-thread", "living-thread", "many-threads", "before-gui-thread",
              "before-other-thread", "before-living-thread", "before-many-threads"}) {
            QTest::newRow(how) << QString::fromLatin1(how);
        }
    }

    void theFirstCallMayComeOnAnyThreadAndAtAnyTime() {
        QFETCH(QString, how);
        const QByteArray usual = outputOf(QStringLiteral("gui-thread"));
        QVERIFY2(usual.startsWith("first: 1 ") && usual.contains("\nsecond: 1 "),
                 usual.constData());
        QVERIFY2(!usual.contains("late"), usual.constData());
        QCOMPARE(outputOf(how), usual);
    }

private:
    /** Of the program that builds the extension in this way; empty when it does not come to its
     * end. */
    static QByteArray outputOf(const QString& how) {
        QProcess process;
        process.start(QStringLiteral(UICOV_EXTENSION_THREADS), {how});
        const bool ended = process.waitForFinished() &&
                           process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
        return ended ? process.readAllStandardOutput() : QByteArray();
    }

    void set(const char* key, const Values& values) {
        m_options.options.erase(key);
        if (!values.empty()) {
            m_options.options[key] = values;
        }
    }

    /** How many records (of that kind) the Show of a new button gives. */
    int recordsOfAShow(int kind = 0, Vorsk::WrapperContext::EventCallback callback = nullptr) {
        if (callback == nullptr) {
            callback = m_context.registrations.first().callback;
        }
        m_hook.messages.clear();
        QPushButton button;
        QShowEvent show;
        callback(&button, &show);
        int records = 0;
        for (const TestLib::FakeHook::Message& message : qAsConst(m_hook.messages)) {
            records += kind == 0 || message.args.at(2).toInt() == kind ? 1 : 0;
        }
        return records;
    }

    TestLib::FakeExtensionHost m_host;
    TestLib::FakeHook m_hook;
    TestLib::FakeOptionSet m_options;
    TestLib::FakeWrapperContext m_context;
    Vorsk::Extension* m_extension = nullptr;
};

QTEST_MAIN(tst_QtUiCoverageExtension)
#include "tst_qtuicoverageextension.moc"
