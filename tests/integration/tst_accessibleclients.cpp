// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "accessiblebus.h"
#include "controlsrun.h"
#include "testlib/testcase.h"
#include "xserver.h"

#include <QTest>
#include <QThread>

#include <memory>

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

/** The program on a thread of its own; it ends by itself when nobody operates it. */
struct Running {
    Running() { m_thread->start(); }
    ~Running() { wait(); }
    Q_DISABLE_COPY(Running)

    void wait() { m_thread->wait(); }

    std::unique_ptr<ControlsRun> run;

private:
    const std::unique_ptr<QThread> m_thread{
        QThread::create([this] { run = std::make_unique<ControlsRun>(text(CLIENT_PROGRAM)); })};
};

} // namespace

/** A program that is operated over the bus by which screen readers do it. */
class tst_AccessibleClients : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatAClientOperatesIsUsed();
};

void tst_AccessibleClients::whatAClientOperatesIsUsed() {
    const XServer server;
    QVERIFY2(server.isRunning(), qPrintable(server.why()));
    AccessibleBus bus;
    QVERIFY2(bus.isConnected(), qPrintable(bus.why()));
    qputenv("DISPLAY", server.display().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");

    Running running;
    constexpr int patience = 60000;
    AccessibleBus::Object window;
    const auto isTitled = [&](const char* title) {
        window = bus.find(text(title));
        return window.isValid();
    };
    QVERIFY(QTest::qWaitFor([&] { return isTitled("clientprogram"); }, patience));
    QVERIFY(bus.act(bus.find(text("Reset"))));
    QVERIFY(QTest::qWaitFor([&] { return isTitled("was reset"); }, patience));
    QVERIFY(bus.act(bus.find(text("Check"))));
    QVERIFY(QTest::qWaitFor([&] { return isTitled("was checked"); }, patience));
    QVERIFY(bus.act(bus.find(text("Quit"))));
    running.wait();
    QCOMPARE(running.run->problem(), QString());
    QCOMPARE(running.run->usedControls().join(QLatin1Char('\n')),
             text("Button \"Quit\" clicked=1\nButton \"Reset\" clicked=1\nCheckBox \"Check\" "
                  "checked=1"));
}

QTEST_GUILESS_MAIN(tst_AccessibleClients)
#include "tst_accessibleclients.moc"
