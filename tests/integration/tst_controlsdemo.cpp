// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "controlsrun.h"
#include "testlib/testcase.h"

#include <QTest>

namespace {

/** What each session operates: neither the button that is disabled nor what its slots change. */
QString usedOfWidgets() {
    return QStringLiteral(R"(Area "Water pressure" pressed=1
Button "Apply" clicked=1
Button "OK" clicked=1
Button "Settings..." clicked=1
CheckBox "Night setback" checked=1
CheckBox "Summer time" checked=1
ComboBox "Mode" chosen=1
Command "As table" triggered=1 by menu
Command "Service..." triggered=3 by toolBar
Command "Vent the circuit" triggered=1 by shortcut
Dial "Pump speed" moved=1
GroupBox "Holiday" checked=1
Link "Manual" followed=1
List "Days" chosen=1
Option "Economy" chosen=1
Option "Ground floor" chosen=1
Option "Weekend" chosen=1
RadioButton "Cooling" checked=1
Slider "Heating curve" moved=1
SpinBox "Pause in hours" changed=1
Tab "Log" chosen=1
Tab "Plan" chosen=1
TextInput "Note for the next visit" edited=2
TextInput "Room name" confirmed=1 edited=7
Tree "Rooms" chosen=1 expanded=1)");
}

/** Each of its windows is made anew for each function, hence a button each. */
QString usedOfQuick() {
    return QStringLiteral(R"(Area "1.4 bar" pressed=1
Button "Apply" clicked=1
Button "Copy to..." clicked=1
Button "OK" clicked=1
Button "Service..." clicked=1
Button "Service..." clicked=1
Button "Service..." clicked=1
Button "Settings..." clicked=1
Button "Weekend" clicked=1
CheckBox "Night setback" checked=1
CheckBox "Summer time" checked=1
CheckBox "Sunday" checked=1
ComboBox "Mode" chosen=1
Command "As table" triggered=1 by menu
Command "Ctrl+E" triggered=1 by shortcut
Dial "Pump speed" moved=1
Link "Manual" followed=1
List "Days" chosen=1
Option "Economy" chosen=1
RadioButton "Cooling" checked=1
Slider "Heating curve" moved=1
SpinBox "Pause in hours" changed=1
Switch "Holiday" checked=1
Tab "Circuit" chosen=1
Tab "Log" chosen=1
Tab "Plan" chosen=1
TextInput "Note for the next visit" edited=2
TextInput "Room name" confirmed=1 edited=7)");
}

} // namespace

/** The demo panels' sessions, recorded with the controls extension as "make demo" records them:
 * what the sessions operated is used, and nothing else is. */
class TestControlsDemo : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void exactlyWhatTheSessionOperatedIsUsed_data();
    void exactlyWhatTheSessionOperatedIsUsed();
};

void TestControlsDemo::exactlyWhatTheSessionOperatedIsUsed_data() {
    QTest::addColumn<QString>("session");
    QTest::addColumn<QString>("used");
    QTest::newRow("Qt Widgets") << QStringLiteral(WIDGETS_SESSION) << usedOfWidgets();
    QTest::newRow("Qt Quick") << QStringLiteral(QUICK_SESSION) << usedOfQuick();
}

void TestControlsDemo::exactlyWhatTheSessionOperatedIsUsed() {
    QFETCH(QString, session);
    QFETCH(QString, used);
    const ControlsRun run(session, {QStringLiteral("-silent")});
    QVERIFY2(run.problem().isEmpty(), qPrintable(run.problem()));
    const QString actual = run.usedControls().join(QLatin1Char('\n'));
    // Longer than what QCOMPARE() would show.
    QVERIFY2(actual == used, qPrintable(actual));
}

QTEST_GUILESS_MAIN(TestControlsDemo)

#include "tst_controlsdemo.moc"
