// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/quickstage.h"
#include "testlib/testcase.h"

#include <QTest>

using TestLib::QuickStage;

/** Each kind of control of Qt Quick by itself. */
class tst_QuickUses : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void inputCountsForWhatItWentTo_data();
    void inputCountsForWhatItWentTo();
    void whatInputBegunEndsLater_data();
    void whatInputBegunEndsLater();
    void oneActionCountsOnce_data();
    void oneActionCountsOnce();
};

void tst_QuickUses::inputCountsForWhatItWentTo_data() {
    QuickStage::addColumns();
    QuickStage::addRow("button by mouse", "Button { objectName: 'x' }", "click x => x clicked");
    QuickStage::addRow("button by touch", "Button { objectName: 'x' }", "touch x => x clicked");
    QuickStage::addRow("button by key", "Button { objectName: 'x'; focus: true }",
                       "key Space => x clicked");
    QuickStage::addRow("button by mnemonic", "Button { objectName: 'x'; text: '&Go' }",
                       "key Alt+G => x clicked");
    QuickStage::addRow("button that can be checked", "Button { objectName: 'x'; checkable: true }",
                       "click x => x checked\nclick x => x unchecked");
    QuickStage::addRow("tool button", "ToolButton { objectName: 'x' }", "click x => x clicked");
    QuickStage::addRow("round button", "RoundButton { objectName: 'x' }", "click x => x clicked");
    QuickStage::addRow(
        "template's button",
        "AbstractButton { objectName: 'x'; width: 50; height: 20; background: Item {} }",
        "click x => x clicked");
    QuickStage::addRow(
        "part of a button",
        "Button { objectName: 'x'; width: 100; height: 40; contentItem: Text { text: 'part' } }",
        "click text:part => x clicked");
    QuickStage::addRow("check box", "CheckBox { objectName: 'x' }",
                       "click x => x checked\nclick x => x unchecked");
    QuickStage::addRow(
        "check box with three states", "CheckBox { objectName: 'x'; tristate: true }",
        "click x => x partiallyChecked\nclick x => x checked\nclick x => x unchecked");
    QuickStage::addRow("switch by dragging", "Switch { objectName: 'x' }",
                       "drag x 0.1,0.5 0.9,0.5 => x checked");
    QuickStage::addRow("radio button that is on already",
                       "RadioButton { objectName: 'x'; checked: true }", "click x => x checked");
    QuickStage::addRow("combo box by wheel",
                       "ComboBox { objectName: 'x'; width: 100; model: 3; wheelEnabled: true }",
                       "wheel x -15 => x chosen");
    QuickStage::addRow("combo box by keys", "ComboBox { objectName: 'x'; model: 3; focus: true }",
                       "key Down => x chosen");
    QuickStage::addRow("text field", "TextField { objectName: 'x'; focus: true }",
                       "type a => x edited\nkey Return => x confirmed\nkey Backspace => x edited");
    QuickStage::addRow("text field by input method", "TextField { objectName: 'x'; focus: true }",
                       "compose ni => nothing\ncommit hao => x edited");
    QuickStage::addRow(
        "text area", "TextArea { objectName: 'x'; width: 100; height: 50; focus: true }",
        "type a => x edited\ncompose ni => nothing\ncommit hao => x edited\nkey Left => nothing");
    QuickStage::addRow(
        "text input", "TextInput { objectName: 'x'; width: 100; focus: true }",
        "type a => x edited\nkey Ctrl+A => nothing\nkey Ctrl+X => x edited\nkey Ctrl+V => x "
        "edited");
    QuickStage::addRow(
        "spin box by its arrows", "SpinBox { objectName: 'x' }",
        "click x 0.95,0.5 => x changed\ntouch x 0.95,0.5 => x changed\nclick x 0.05,0.5 => x "
        "changed");
    QuickStage::addRow("spin box by typing", "SpinBox { objectName: 'x'; editable: true; to: 99 }",
                       "click x => nothing\nkey 7 => nothing\nkey Return => x changed");
    QuickStage::addRow("slider", "Slider { objectName: 'x'; width: 200 }",
                       "drag x 0.1,0.5 0.9,0.5 => x moved\ntouchDrag x 0.9,0.5 0.1,0.5 => x moved");
    QuickStage::addRow("slider by key", "Slider { objectName: 'x'; focus: true }",
                       "key Right => x moved");
    QuickStage::addRow(
        "both handles of a range slider",
        "RangeSlider { objectName: 'x'; width: 300; first.value: 0.1; second.value: 0.9 }",
        "drag x 0.12,0.5 0.3,0.5 => x moved\ndrag x 0.88,0.5 0.6,0.5 => x moved");
    QuickStage::addRow("dial", "Dial { objectName: 'x' }", "drag x 0.1,0.5 0.9,0.5 => x moved");
    QuickStage::addRow(
        "tab",
        "TabBar { width: 200; TabButton { text: '1' } TabButton { objectName: 'x'; text: '2' } }",
        "click x => x chosen");
    QuickStage::addRow(
        "page of a swipe view",
        "Item { SwipeView { objectName: 'x'; width: 200; height: 100; spacing: 1; Item { property "
        "string title: 'a' } "
        "Item { property string title: 'b' } } }",
        "drag x 0.9,0.5 0.1,0.5 => Tab b chosen\nuntil x currentIndex 1 => nothing\ndrag x 0.1,0.5 "
        "0.9,0.5 => Tab a chosen\nuntil x currentIndex 0 => nothing");
    QuickStage::addRow(
        "page of a swipe view that goes with a tab bar",
        "Column { TabBar { id: t; width: 200; currentIndex: x.currentIndex; TabButton { "
        "objectName: 'a' } TabButton { objectName: 'b' } } SwipeView { id: x; objectName: 'x'; "
        "width: 200; height: 100; spacing: 1; currentIndex: t.currentIndex; Item {} Item {} } }",
        "drag x 0.9,0.5 0.1,0.5 => b chosen\nuntil x currentIndex 1 => nothing\nclick a => a "
        "chosen\nuntil x currentIndex 0 => nothing\nclick b => b chosen");
    QuickStage::addRow(
        "page of a swipe view in a page with a tab bar",
        "Page { width: 200; height: 200; header: ToolBar { TabBar { id: t; anchors.fill: parent; "
        "currentIndex: x.currentIndex; TabButton { objectName: 'a' } TabButton { objectName: 'b' } "
        "} } SwipeView { id: x; objectName: 'x'; anchors.fill: parent; spacing: 1; currentIndex: "
        "t.currentIndex; Item {} Item {} } }",
        "drag x 0.9,0.5 0.1,0.5 => b chosen\nuntil x currentIndex 1 => nothing");
    QuickStage::addRow(
        "page of a swipe view beside a tab bar that does not follow",
        "Column { TabBar { width: 200; TabButton { objectName: 'a' } TabButton { objectName: 'b' } "
        "} SwipeView { objectName: 'x'; width: 200; height: 100; spacing: 1; Item { property "
        "string title: 'A' } Item { property string title: 'B' } } }",
        "drag x 0.9,0.5 0.1,0.5 => Tab B chosen\nuntil x currentIndex 1 => nothing\n"
        "click b => b chosen");
    QuickStage::addRow(
        "list by key",
        "ListView { objectName: 'x'; width: 100; height: 100; model: 3; focus: true; "
        "delegate: Text { text: index } }",
        "key Down => x chosen");
    QuickStage::addRow("row of a list",
                       "ListView { objectName: 'x'; width: 100; height: 100; model: 3; "
                       "delegate: ItemDelegate { objectName: 'row' + index } }",
                       "click row1 => row1 clicked, x chosen");
    QuickStage::addRow(
        "row with a tap handler",
        "ListView { objectName: 'x'; width: 100; height: 100; model: 3; delegate: Rectangle "
        "{ width: 100; height: 30; TapHandler { objectName: 'tap' + index } } }",
        "click tap1 => tap1 pressed, x chosen");
    QuickStage::addRow(
        "something on a row",
        "ListView { objectName: 'x'; width: 200; height: 100; model: 3; delegate: Item "
        "{ width: 200; height: 40; Button { objectName: 'tool' + index; width: 50; height: 30 } } "
        "}",
        "click tool1 => tool1 clicked");
    QuickStage::addRow(
        "path view",
        "PathView { objectName: 'x'; width: 200; height: 100; model: 5; "
        "path: Path { startX: 0; startY: 50; PathLine { x: 200; y: 50 } } "
        "delegate: ItemDelegate { objectName: 'row' + index; width: 30; height: 30 } }",
        "click row2 => row2 clicked, x chosen");
    QuickStage::addRow("area", "MouseArea { objectName: 'x'; width: 50; height: 50 }",
                       "click x => x pressed\ntouch x => x pressed");
    QuickStage::addRow("area that is dragged",
                       "MouseArea { objectName: 'x'; width: 200; height: 50 }",
                       "drag x 0.1,0.5 0.9,0.5 => x dragged, x pressed");
    QuickStage::addRow("area with a finger that moves",
                       "MultiPointTouchArea { objectName: 'x'; width: 50; height: 50 }",
                       "touch x => x pressed\nclick x => x pressed");
    QuickStage::addRow("tap handler",
                       "Item { width: 50; height: 50; TapHandler { objectName: 'x' } }",
                       "click x => x pressed\ntouch x => x pressed");
    QuickStage::addRow(
        "drag handler",
        "Item { width: 200; height: 50; DragHandler { objectName: 'x'; target: null } }",
        "click x => nothing\ndrag x 0.1,0.5 0.9,0.5 => x dragged\n"
        "touchDrag x 0.1,0.5 0.9,0.5 => x dragged");
    QuickStage::addRow("pinch handler",
                       "Item { width: 200; height: 200; PinchHandler { objectName: 'x'; target: "
                       "null } }",
                       "touch x => nothing\npinch x 0.5,0.5 0.9,0.5 => x dragged\n"
                       "pinch x 0.5,0.5 0.5,0.9 => x dragged");
    QuickStage::addRow("pinch area", "PinchArea { objectName: 'x'; width: 200; height: 200 }",
                       "touch x => nothing\npinch x 0.5,0.5 0.9,0.5 => x dragged");
    QuickStage::addRow("pinch handler that is disabled",
                       "Item { width: 200; height: 200; PinchHandler { objectName: 'x'; target: "
                       "null; enabled: false } }",
                       "pinch x 0.5,0.5 0.9,0.5 => nothing");
    QuickStage::addRow(
        "tabs by key",
        "TabBar { width: 200; TabButton { objectName: 'a'; focus: true } TabButton { "
        "objectName: 'b' } }",
        "focus a => nothing\nkey Right => b chosen\nkey Left => a chosen");
    QuickStage::addRow("point handler",
                       "Item { width: 50; height: 50; PointHandler { objectName: 'x' } }",
                       "click x => x pressed");
    QuickStage::addRow(
        "link", "Text { objectName: 'x'; text: '<a href=\"a\">link</a>'; onLinkActivated: {} }",
        "click x => x followed\ntouch x => x followed");
    QuickStage::addRow("link in a text that cannot be edited",
                       "TextArea { objectName: 'x'; readOnly: true; textFormat: Text.RichText; "
                       "text: '<a href=\"a\">link link link</a>'; onLinkActivated: {} }",
                       "click x 0.2,0.5 => x followed");
    QuickStage::addRow("button on a flickable that waits",
                       "Flickable { width: 100; height: 100; contentHeight: 500; pressDelay: 50; "
                       "Button { objectName: 'x' } }",
                       "click x => x clicked\npress x => nothing\nuntil x pressed true => nothing\n"
                       "release => x clicked");
    QuickStage::addRow("button in a popup",
                       "Item { Popup { id: p; visible: true; Button { objectName: 'x' } } }",
                       "click x => x clicked");
    QuickStage::addRow("shortcut", "Item { Shortcut { objectName: 'x'; sequence: 'Ctrl+K' } }",
                       "key Ctrl+K => x triggered");
}

void tst_QuickUses::inputCountsForWhatItWentTo() {
    QCOMPARE(QuickStage::runRow(), QStringList());
}

void tst_QuickUses::whatInputBegunEndsLater_data() {
    QuickStage::addColumns();
    QuickStage::addRow(
        "a button that repeats",
        "Button { objectName: 'x'; property int n; onClicked: ++n; autoRepeat: true; "
        "autoRepeatDelay: 1; autoRepeatInterval: 1 }",
        "press x => nothing\nuntil x n 9 => x clicked\nrelease => nothing");
    QuickStage::addRow("a button with a delay", "DelayButton { objectName: 'x'; delay: 50 }",
                       "press x => nothing\nuntil x progress 1 => x clicked\nrelease => nothing");
    QuickStage::addRow(
        "a spin box that repeats", "SpinBox { objectName: 'x'; to: 9 }",
        "press x 0.95,0.5 => nothing\nuntil x value 9 => x changed\nrelease => nothing");
    QuickStage::addRow(
        "a long press",
        "Item { width: 50; height: 50; TapHandler { objectName: 'x'; longPressThreshold: 0.05; "
        "property bool isHeld; onLongPressed: isHeld = true } }",
        "press x => nothing\nuntil x isHeld true => x pressed\nrelease => nothing");
    QuickStage::addRow("a tumbler that goes on moving",
                       "Tumbler { objectName: 'x'; model: 30; height: 200; width: 50 }",
                       "drag x 0.5,0.8 0.5,0.2 => x changed\nuntil x moving false => nothing");
    QuickStage::addRow(
        "a program that sets what is held",
        "Item { Timer { interval: 1; running: s.up.pressed; onTriggered: { c.toggle(); c.toggled() "
        "} } "
        "SpinBox { id: s; objectName: 'x'; to: 5; onValueModified: c.toggle() } "
        "CheckBox { id: c; y: 60 } }",
        "press x 0.95,0.5 => nothing\nuntil x value 5 => x changed\nrelease => nothing");
    QuickStage::addRow(
        "a program that sets a view while it moves",
        "Item { Timer { interval: 1; running: l.moving; repeat: true; "
        "onTriggered: { t.currentIndex += 1; o.currentIndex += 1 } } "
        "ListView { id: l; objectName: 'x'; width: 100; height: 100; model: 90; "
        "delegate: Text { height: 30; text: index } } "
        "Tumbler { id: t; x: 150; model: 9 } ListView { id: o; x: 200; model: 9; delegate: Item {} "
        "} }",
        "drag x 0.5,0.9 0.5,0.1 => nothing\nuntil x moving false => nothing");
}

void tst_QuickUses::whatInputBegunEndsLater() {
    QCOMPARE(QuickStage::runRow(), QStringList());
}

void tst_QuickUses::oneActionCountsOnce_data() {
    QuickStage::addColumns();
    QuickStage::addRow("a slider's way", "Slider { objectName: 'x'; width: 200 }",
                       "drag x 0.1,0.5 0.9,0.5 => x moved\nclick x 0.3,0.5 => x moved");
    QuickStage::addRow("a double click", "Button { objectName: 'x' }",
                       "doubleClick x => x clicked, x clicked");
    QuickStage::addRow(
        "a menu item with an action",
        "Item { Action { id: a; objectName: 'a'; text: 'A' } Menu { objectName: 'm'; "
        "MenuItem { objectName: 'i'; action: a } } }",
        "call m open => nothing\nuntil m opened true => nothing\nclick i => a triggered");
    QuickStage::addRow(
        "a tab and its bar",
        "TabBar { width: 200; TabButton { objectName: 'a' } TabButton { objectName: 'b' } }",
        "click b => b chosen\nclick b => b chosen");
    QuickStage::addRow(
        "a row and its list",
        "ListView { id: l; objectName: 'x'; width: 100; height: 100; model: 3; delegate: "
        "ItemDelegate { objectName: 'row' + index; onClicked: l.currentIndex = index } }",
        "click row1 => row1 clicked, x chosen");
}

void tst_QuickUses::oneActionCountsOnce() {
    QCOMPARE(QuickStage::runRow(), QStringList());
}

int main(int argc, char* argv[]) {
    return TestLib::runWithDeliveries<tst_QuickUses>(argc, argv);
}

#include "tst_quickuses.moc"
