// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "doctor/displaychecks.h"
#include "launch/qtlibraries.h"
#include "testlib/testcase.h"

#include <QDir>
#include <QFile>
#include <QLocalServer>
#include <QTemporaryDir>
#include <QTest>

using Uicov::Doctor::Finding;
using Uicov::Launch::QtLibraries;
using Result = Uicov::Doctor::Finding::Result;

class TestDisplayChecks : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    const QList<QByteArray> m_names{
        "QT_QPA_PLATFORM",  "DISPLAY",         "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR",
        "QT_QUICK_BACKEND", "QMLSCENE_DEVICE", "QT_PLUGIN_PATH",  "QT_QPA_PLATFORM_PLUGIN_PATH"};
    QMap<QByteArray, QByteArray> m_before;

    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

    bool makeFile(const QString& file) const {
        QFile made(file);
        return QDir().mkpath(QFileInfo(file).path()) && made.open(QIODevice::WriteOnly);
    }

    /** A Qt that is in a folder of this test. */
    QtLibraries qt() const {
        return QtLibraries({QStringLiteral("\tlibQt5Core.so.5 => ") +
                            path("qt/lib/libQt5Core.so.5") + QStringLiteral(" (0x0)")});
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        for (const QByteArray& name : m_names) {
            m_before[name] = qgetenv(name.constData());
            qunsetenv(name.constData());
        }
    }

    void cleanup() {
        for (auto it = m_before.cbegin(); it != m_before.cend(); ++it) {
            it.value().isNull() ? qunsetenv(it.key().constData())
                                : qputenv(it.key().constData(), it.value());
        }
        TestLib::TestCase::cleanup();
    }

    void noDisplayAtAll() {
        QCOMPARE(Uicov::Doctor::displayPlatform(), QString());
        const Finding finding = Uicov::Doctor::checkDisplay(path("devices"));
        QVERIFY(finding.result == Result::Problem);
        QVERIFY(finding.seen.contains(QStringLiteral("WAYLAND_DISPLAY")));
        QVERIFY(finding.advice.contains(QStringLiteral("QT_QPA_PLATFORM=offscreen")));
    }

    void aDeviceWithAScreenOfItsOwnMayDo() {
        QVERIFY(makeFile(path("framebuffer/fb0")));
        QVERIFY(makeFile(path("cards/dri/card0")));
        QVERIFY(Uicov::Doctor::checkDisplay(path("framebuffer")).result == Result::Warning);
        QVERIFY(Uicov::Doctor::checkDisplay(path("cards")).result == Result::Warning);
    }

    void platform_data() {
        QTest::addColumn<QByteArray>("platform");
        QTest::addColumn<QByteArray>("display");
        QTest::addColumn<QByteArray>("wayland");
        QTest::addColumn<QString>("expected");
        QTest::newRow("chosen") << QByteArray("offscreen") << QByteArray(":0") << QByteArray()
                                << "offscreen";
        QTest::newRow("with options")
            << QByteArray("eglfs:size=1x1") << QByteArray() << QByteArray() << "eglfs";
        QTest::newRow("first of several")
            << QByteArray("wayland;xcb") << QByteArray(":0") << QByteArray("w") << "wayland";
        QTest::newRow("X") << QByteArray() << QByteArray(":0") << QByteArray("w") << "xcb";
        QTest::newRow("Wayland") << QByteArray() << QByteArray() << QByteArray("w") << "wayland";
    }

    void platform() {
        QFETCH(QByteArray, platform);
        QFETCH(QByteArray, display);
        QFETCH(QByteArray, wayland);
        QFETCH(QString, expected);
        qputenv("QT_QPA_PLATFORM", platform);
        qputenv("DISPLAY", display);
        qputenv("WAYLAND_DISPLAY", wayland);
        QCOMPARE(Uicov::Doctor::displayPlatform(), expected);
    }

    void anXServerThatDoesNotAnswer() {
        qputenv("DISPLAY", ":987654");
        const Finding finding = Uicov::Doctor::checkDisplay();
        QVERIFY(finding.result == Result::Problem);
        QVERIFY(finding.seen.contains(QStringLiteral("no X server answers")));
        qputenv("QT_QPA_PLATFORM", "xcb");
        qunsetenv("DISPLAY");
        QVERIFY(Uicov::Doctor::checkDisplay().seen.contains(QStringLiteral("DISPLAY is not set")));
    }

    void anotherMachinesXServerIsNotTried() {
        qputenv("DISPLAY", "other.example:0");
        const Finding finding = Uicov::Doctor::checkDisplay();
        QVERIFY(finding.result == Result::Ok);
        QVERIFY(finding.seen.contains(QStringLiteral("not tried")));
    }

    void aWaylandCompositorIsTried() {
        qputenv("WAYLAND_DISPLAY", "w-1");
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder.path()));
        QVERIFY(Uicov::Doctor::checkDisplay().result == Result::Problem);
        QLocalServer compositor;
        QVERIFY(compositor.listen(path("w-1")));
        const Finding finding = Uicov::Doctor::checkDisplay();
        QVERIFY2(finding.result == Result::Ok, qPrintable(finding.seen));
        qputenv("WAYLAND_DISPLAY", QFile::encodeName(path("w-1"))); // may be a whole path
        QVERIFY(Uicov::Doctor::checkDisplay().result == Result::Ok);
        qputenv("WAYLAND_DISPLAY", QByteArray(200, 'w')); // longer than a socket's name can be
        QVERIFY(Uicov::Doctor::checkDisplay().result == Result::Problem);
    }

    void offscreenNeedsNoDisplay() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QVERIFY(Uicov::Doctor::checkDisplay(path("none")).result == Result::Ok);
    }

    void thePlatformPluginIsLookedForWhereQtLooks_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("variable");
        QTest::addColumn<QByteArray>("value");
        const QByteArray folder = QFile::encodeName(m_folder.path());
        QTest::newRow("Debian's layout")
            << "qt/lib/qt5/plugins/platforms/libqfake.so" << QByteArray() << QByteArray();
        QTest::newRow("Qt's own layout")
            << "qt/plugins/platforms/libqfake.so" << QByteArray() << QByteArray();
        QTest::newRow("variants of one platform")
            << "qt/plugins/platforms/libqfake-egl.so" << QByteArray() << QByteArray();
        QTest::newRow("beside the application")
            << "app/platforms/libqfake.so" << QByteArray() << QByteArray();
        QTest::newRow("QT_PLUGIN_PATH")
            << "mine/platforms/libqfake.so" << QByteArray("QT_PLUGIN_PATH") << folder + "/mine";
        QTest::newRow("QT_QPA_PLATFORM_PLUGIN_PATH")
            << "those/libqfake.so" << QByteArray("QT_QPA_PLATFORM_PLUGIN_PATH")
            << folder + "/those";
    }

    void thePlatformPluginIsLookedForWhereQtLooks() {
        QFETCH(QString, file);
        QFETCH(QByteArray, variable);
        QFETCH(QByteArray, value);
        QVERIFY(makeFile(path("app/program")));
        qputenv("QT_QPA_PLATFORM", "fake");
        if (!variable.isEmpty()) {
            qputenv(variable.constData(), value);
        }
        const Finding before = Uicov::Doctor::checkPlatformPlugin(qt(), path("app/program"));
        QVERIFY(before.result == Result::Warning);
        QVERIFY(before.seen.contains(QStringLiteral("platform fake")));
        QVERIFY(makeFile(m_folder.filePath(file)));
        const Finding after = Uicov::Doctor::checkPlatformPlugin(qt(), path("app/program"));
        QVERIFY(QFile::remove(m_folder.filePath(file)));
        QVERIFY(after.result == Result::Ok);
        QCOMPARE(QFileInfo(after.seen).fileName(), QFileInfo(file).fileName());
    }

    void aQtConfLeadsToPlugins() {
        QVERIFY(makeFile(path("conf/bin/program")));
        QFile conf(path("conf/bin/qt.conf"));
        QVERIFY(conf.open(QIODevice::WriteOnly));
        QVERIFY(conf.write("[Paths]\nPrefix = ..\nPlugins = my/plugins\n") > 0);
        conf.close();
        QVERIFY(Uicov::Doctor::platformPluginFolders(qt(), path("conf/bin/program"))
                    .contains(path("conf/my/plugins")));
    }

    void quickWithoutAScreenNeedsItsSoftwareRenderer() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        const Finding finding = Uicov::Doctor::checkQuickBackend();
        QVERIFY(finding.result == Result::Warning);
        QVERIFY(finding.advice.contains(QStringLiteral("QT_QUICK_BACKEND=software")));
        qputenv("QT_QUICK_BACKEND", "software");
        QVERIFY(Uicov::Doctor::checkQuickBackend().result == Result::Ok);
        qputenv("QT_QPA_PLATFORM", "xcb");
        QVERIFY(Uicov::Doctor::checkQuickBackend().result == Result::Ok);
        qunsetenv("QT_QUICK_BACKEND");
        QVERIFY(Uicov::Doctor::checkQuickBackend().result == Result::Ok);
    }
};

QTEST_GUILESS_MAIN(TestDisplayChecks)
#include "tst_displaychecks.moc"
