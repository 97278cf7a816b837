// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/quickstage.h"
#include "testlib/testcase.h"

#include <QQuickItem>
#include <QTest>

using TestLib::QuickStage;

/** What must not count, each by itself, and what applications do to their controls meanwhile. */
class tst_QuickUsesTraps : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatTheProgramDoesDoesNotCount_data();
    void whatTheProgramDoesDoesNotCount();
    void slotsThatSetOthersUseNothing_data();
    void slotsThatSetOthersUseNothing();
    void whatCannotBeReachedIsNotUsed_data();
    void whatCannotBeReachedIsNotUsed();
    void wildcardsThatCutConnectionsCutNoUses();
    void aControlMayDieInItsOwnSlot_data();
    void aControlMayDieInItsOwnSlot();
    void watchingChangesNothing_data();
    void watchingChangesNothing();
};

void tst_QuickUsesTraps::whatTheProgramDoesDoesNotCount_data() {
    QuickStage::addColumns();
    // Each in a timer that fires once, which the script waits for.
    const auto byTimer = [](const char* name, const char* control, const char* code) {
        const QByteArray qml = QByteArray("Item { id: top; objectName: 'top'; property bool "
                                          "isDone; Timer { interval: 1; running: true; "
                                          "onTriggered: { ") +
                               code + "; top.isDone = true } } " + control + " }";
        QTest::newRow(name) << qml << QByteArray("until top isDone true => nothing");
    };
    byTimer("clicked", "Button { id: x }", "x.clicked()");
    byTimer("toggled", "CheckBox { id: x }", "x.toggle(); x.toggled(); x.checked = false");
    byTimer("switch", "Switch { id: x }", "x.checked = true; x.clicked()");
    byTimer("combo box", "ComboBox { id: x; model: 3 }", "x.currentIndex = 2; x.activated(2)");
    byTimer("edited", "TextField { id: x; focus: true }",
            "x.text = 'a'; x.insert(0, 'b'); x.textEdited(); x.accepted()");
    byTimer("area", "TextArea { id: x; focus: true }", "x.text = 'a'; x.insert(0, 'b')");
    byTimer("spin box", "SpinBox { id: x }", "x.increase(); x.value = 9; x.valueModified()");
    byTimer("slider", "Slider { id: x }", "x.increase(); x.value = 0.7; x.moved()");
    byTimer("range slider", "RangeSlider { id: x }", "x.setValues(0.2, 0.3); x.first.moved()");
    byTimer("dial", "Dial { id: x }", "x.increase(); x.moved()");
    byTimer("tumbler", "Tumbler { id: x; model: 9 }", "x.currentIndex = 4");
    byTimer("tab bar", "TabBar { id: x; TabButton {} TabButton {} }", "x.currentIndex = 1");
    byTimer("swipe view", "SwipeView { id: x; Item {} Item {} }", "x.incrementCurrentIndex()");
    byTimer("list", "ListView { id: x; model: 5; delegate: Item {} }",
            "x.currentIndex = 3; x.model = 2");
    byTimer("command", "Action { id: x }", "x.trigger(); x.toggle(this)");
    byTimer("shortcut", "Shortcut { id: x; sequence: 'F2' }", "x.activated()");
    byTimer("menu item", "Menu { MenuItem { id: x } }", "x.triggered(); x.clicked()");
    byTimer("link", "Text { id: x; text: '<a href=\"a\">b</a>' }", "x.linkActivated('a')");
}

void tst_QuickUsesTraps::whatTheProgramDoesDoesNotCount() {
    QCOMPARE(QuickStage::runRow(), QStringList());
}

void tst_QuickUsesTraps::slotsThatSetOthersUseNothing_data() {
    QuickStage::addColumns();
    const auto inSlot = [](const char* name, const char* control, const char* code) {
        QTest::newRow(name) << QByteArray("Item { Button { objectName: 'do'; onClicked: { ") +
                                   code + " } } Item { y: 50; " + control + " } }"
                            << QByteArray("click do => do clicked\ntouch do => do clicked\n"
                                          "focus do => nothing\nkey Space => do clicked");
    };
    inSlot("clicked", "Button { id: x }", "x.clicked()");
    inSlot("toggled", "CheckBox { id: x }", "x.toggle(); x.toggled(); x.clicked()");
    inSlot("radio", "RadioButton { id: x }", "x.checked = !x.checked; x.toggled()");
    inSlot("combo box", "ComboBox { id: x; model: 3 }",
           "x.currentIndex = x.currentIndex ? 0 : 1; x.activated(1)");
    inSlot("text", "TextField { id: x }", "x.text += 'a'; x.insert(0, 'b'); x.accepted()");
    inSlot("area", "TextArea { id: x }", "x.append('a')");
    inSlot("spin box", "SpinBox { id: x }", "x.increase(); x.valueModified()");
    inSlot("slider", "Slider { id: x }", "x.value += 0.1; x.moved()");
    inSlot("tumbler", "Tumbler { id: x; model: 9 }", "x.currentIndex += 1");
    inSlot("tab bar", "TabBar { id: x; TabButton {} TabButton {} }",
           "x.currentIndex = 1 - x.currentIndex");
    inSlot("swipe view", "SwipeView { id: x; Item {} Item {} }",
           "x.currentIndex = 1 - x.currentIndex");
    inSlot("list", "ListView { id: x; model: 9; delegate: Item {} }", "x.currentIndex += 1");
    inSlot("command", "Action { id: x }", "x.trigger()");
    inSlot("menu item", "Menu { MenuItem { id: x } }", "x.triggered()");
    inSlot("area that is pressed", "MouseArea { id: x; width: 9; height: 9 }",
           "x.pressedChanged()");
    QuickStage::addRow("a field that clears itself",
                       "TextField { objectName: 'x'; focus: true; onAccepted: text = '' }",
                       "type a => x edited\nkey Return => x confirmed");
    QuickStage::addRow(
        "a button on a page that turns it",
        "SwipeView { id: v; width: 200; height: 100; Item { Button { objectName: 'next'; "
        "onClicked: v.incrementCurrentIndex() } } Item {} }",
        "click next => next clicked");
    QuickStage::addRow(
        "a handler that sets others",
        "Item { Item { width: 50; height: 50; TapHandler { objectName: 'tap'; onTapped: { "
        "x.toggle(); x.toggled(); v.currentIndex = 1 } } } CheckBox { id: x; y: 60 } "
        "SwipeView { id: v; Item {} Item {} } }",
        "click tap => tap pressed\ntouch tap => tap pressed");
    QuickStage::addRow(
        "a check box bound to another",
        "Item { CheckBox { id: a; objectName: 'a' } CheckBox { y: 50; checked: a.checked; "
        "objectName: 'b' } }",
        "click a => a checked\nclick a => a unchecked");
    QuickStage::addRow(
        "one of a group",
        "Column { RadioButton { objectName: 'a'; checked: true } RadioButton { objectName: 'b' } }",
        "click b => b checked\nclick a => a checked");
}

void tst_QuickUsesTraps::slotsThatSetOthersUseNothing() {
    QCOMPARE(QuickStage::runRow(), QStringList());
}

void tst_QuickUsesTraps::whatCannotBeReachedIsNotUsed_data() {
    QuickStage::addColumns();
    QuickStage::addRow(
        "disabled", "Button { objectName: 'x'; enabled: false }",
        "click x => nothing\ntouch x => nothing\nfocus x => nothing\nkey Space => nothing");
    QuickStage::addRow("disabled by what it lies in",
                       "Item { enabled: false; Button { objectName: 'x' } }", "click x => nothing");
    QuickStage::addRow("hidden", "Item { Button { objectName: 'x'; visible: false } }",
                       "click x => nothing\ntouch x => nothing");
    QuickStage::addRow("covered",
                       "Item { Button { objectName: 'x'; width: 80; height: 40 } "
                       "MouseArea { objectName: 'top'; width: 80; height: 40 } }",
                       "click x => top pressed\ntouch x => top pressed");
    QuickStage::addRow("scrolled away",
                       "Flickable { width: 100; height: 50; contentHeight: 300; clip: true; "
                       "Button { objectName: 'x'; y: 200 } }",
                       "click x => nothing");
    QuickStage::addRow(
        "on another page of a stack",
        "StackView { id: v; width: 100; height: 100; initialItem: Item { Button { objectName: 'x' "
        "} } "
        "Component.onCompleted: push(other, StackView.Immediate); Component { id: other; Item {} } "
        "}",
        "click x => nothing");
    QuickStage::addRow(
        "on another tab",
        "Item { Item { visible: false; MouseArea { objectName: 'x'; width: 50; height: 50 } } "
        "Item { MouseArea { objectName: 'y'; width: 50; height: 50 } } }",
        "click x => y pressed");
    QuickStage::addRow(
        "behind a modal popup",
        "Item { width: 300; height: 200; Button { objectName: 'x' } Popup { x: 150; visible: true; "
        "modal: true; closePolicy: Popup.NoAutoClose; width: 50; height: 50 } }",
        "click x => nothing\ntouch x => nothing");
    QuickStage::addRow(
        "an area that refuses the press",
        "Item { MouseArea { objectName: 'x'; width: 50; height: 50; onPressed: mouse.accepted = "
        "false } }",
        "click x => nothing");
    QuickStage::addRow(
        "an area for another button",
        "MouseArea { objectName: 'x'; width: 50; height: 50; acceptedButtons: Qt.RightButton }",
        "click x => nothing\nrightClick x => x pressed");
    QuickStage::addRow(
        "a press that leaves the button",
        "Item { Button { objectName: 'x' } Item { objectName: 'far'; x: 300; y: 200; width: 10; "
        "height: 10 } }",
        "press x => nothing\nmove far => nothing\nrelease => nothing");
    QuickStage::addRow("a text that cannot be edited",
                       "TextField { objectName: 'x'; readOnly: true; focus: true }",
                       "type a => nothing");
    QuickStage::addRow("a link without a receiver",
                       "Text { objectName: 'x'; text: '<a href=\"a\">link</a>' }",
                       "click x => nothing");
    QuickStage::addRow(
        "beside the link",
        "Text { objectName: 'x'; text: 'beside <a href=\"a\">b</a>'; onLinkActivated: {} }",
        "click x 0.1,0.5 => nothing");
}

void tst_QuickUsesTraps::whatCannotBeReachedIsNotUsed() {
    QCOMPARE(QuickStage::runRow(), QStringList());
}

void tst_QuickUsesTraps::wildcardsThatCutConnectionsCutNoUses() {
    QuickStage stage("CheckBox { objectName: 'x' }");
    QVERIFY(stage.isReady);
    QCOMPARE(stage.script.run("click x => x checked"), QStringList());
    stage.scene.root()->disconnect();
    QCOMPARE(stage.script.run("click x => x unchecked\ntouch x => x checked"), QStringList());
}

void tst_QuickUsesTraps::aControlMayDieInItsOwnSlot_data() {
    QuickStage::addColumns();
    const auto dying = [](const char* name, const char* control, const char* step) {
        QTest::newRow(name) << QByteArray("Item { Loader { id: l; focus: true; sourceComponent: ") +
                                   control + " } Button { y: 100; objectName: 'y' } }"
                            << QByteArray(step) + "\nclick y => y clicked";
    };
    dying("clicked", "Button { objectName: 'x'; onClicked: l.active = false }",
          "click x => x clicked");
    dying("pressed", "Button { objectName: 'x'; onPressed: l.active = false }",
          "press x => nothing");
    dying("toggled", "CheckBox { objectName: 'x'; onToggled: l.active = false }",
          "click x => x checked");
    dying("area",
          "MouseArea { width: 50; height: 50; objectName: 'x'; onPressed: l.active = false }",
          "press x => nothing");
    dying("tapped",
          "Item { width: 50; height: 50; TapHandler { objectName: 'x'; onTapped: "
          "l.active = false } }",
          "click x => x pressed");
    dying("tapped by touch",
          "Item { width: 50; height: 50; TapHandler { objectName: 'x'; "
          "onTapped: l.active = false } }",
          "touch x => x pressed");
    dying("dragged",
          "Item { width: 200; height: 50; DragHandler { objectName: 'x'; target: null; "
          "onActiveChanged: if (active) l.active = false } }",
          "drag x 0.1,0.5 0.9,0.5 => x dragged");
    dying("pinched",
          "Item { width: 200; height: 99; PinchHandler { objectName: 'x'; target: null; "
          "onActiveChanged: if (active) l.active = false } }",
          "pinch x 0.5,0.5 0.9,0.5 => nothing"); // died before it was told of
    dying("pinched, and gone at the end of it",
          "Item { width: 200; height: 99; PinchHandler { objectName: 'x'; target: null; "
          "onActiveChanged: if (!active) l.active = false } }",
          "pinch x 0.5,0.5 0.9,0.5 => x dragged");
    dying("accepted", "TextField { objectName: 'x'; focus: true; onAccepted: l.active = false }",
          "key Return => x confirmed");
}

void tst_QuickUsesTraps::aControlMayDieInItsOwnSlot() {
    const QStringList failed = QuickStage::runRow();
    QVERIFY2(failed.isEmpty(), qPrintable(failed.join(QLatin1Char('\n'))));
}

void tst_QuickUsesTraps::watchingChangesNothing_data() {
    QTest::addColumn<QByteArray>("qml");
    QTest::addColumn<QByteArray>("script");
    // Qt Quick leaves these events to others as long as nobody listens.
    QuickStage::addRow(
        "a click on an area without a receiver",
        "Item { MouseArea { objectName: 'below'; width: 50; height: 50; onWheel: wheels++; "
        "property int wheels } MouseArea { objectName: 'top'; width: 50; height: 50 } }",
        "click top => top pressed\nwheel top 15 => nothing\nuntil below wheels 1 => nothing");
    QuickStage::addRow("a link without a receiver",
                       "Item { MouseArea { objectName: 'below'; width: 200; height: 50 } "
                       "Text { objectName: 'x'; text: '<a href=\"a\">link</a>' } }",
                       "click x => below pressed");
}

void tst_QuickUsesTraps::watchingChangesNothing() {
    QCOMPARE(QuickStage::runRow(), QStringList());
}

int main(int argc, char* argv[]) {
    return TestLib::runWithDeliveries<tst_QuickUsesTraps>(argc, argv);
}

#include "tst_quickusestraps.moc"
