#include "testlib/quickscene.h"
#include "testlib/quickscript.h"
#include "testlib/quickusesprobe.h"
#include "testlib/testcase.h"

#include <QQuickItem>
#include <QQuickWidget>
#include <QQuickWindow>
#include <QTest>

#include <memory>

using TestLib::QuickScene;
using TestLib::QuickScript;
using TestLib::QuickUsesProbe;
using Imports = TestLib::QuickScene::Imports;
using Vorsk::UIControls::Attribute;

namespace {

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

/** A scene in a window that is operated by a script. */
struct Stage {
    explicit Stage(const QByteArray& qml, Imports imports = Imports::Latest2)
        : scene(qml, imports)
        , script(*scene.window(), [this] { return probe.takeUses(); }) {
        isReady = scene.show();
        scene.window()->requestActivate();
        isReady = isReady && QTest::qWaitForWindowActive(scene.window());
    }

    QuickUsesProbe probe;
    QuickScene scene;
    QuickScript script;
    bool isReady = false;
};

} // namespace

/** Each kind of control and each thing that must not count, by itself. */
class tst_QuickUses : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void inputCountsForWhatItWentTo_data();
    void inputCountsForWhatItWentTo();
    void whatTheProgramDoesDoesNotCount_data();
    void whatTheProgramDoesDoesNotCount();
    void slotsThatSetOthersUseNothing_data();
    void slotsThatSetOthersUseNothing();
    void whatCannotBeReachedIsNotUsed_data();
    void whatCannotBeReachedIsNotUsed();
    void commandsTellTheirWays_data();
    void commandsTellTheirWays();
    void whatInputBegunEndsLater_data();
    void whatInputBegunEndsLater();
    void oneActionCountsOnce_data();
    void oneActionCountsOnce();
    void wildcardsThatCutConnectionsCutNoUses();
    void aControlMayDieInItsOwnSlot_data();
    void aControlMayDieInItsOwnSlot();
    void watchingChangesNothing_data();
    void watchingChangesNothing();
    void aQuickWidgetIsLikeAWindow();
    void accessibilityClientsOperateWhatSignalsLast();
};

namespace {

/** Rows of a table: QML text and script. */
void rows() {
    QTest::addColumn<QByteArray>("qml");
    QTest::addColumn<QByteArray>("script");
}

void row(const char* name, const char* qml, const char* script) {
    QTest::newRow(name) << QByteArray(qml) << QByteArray(script);
}

} // namespace

#define RUN_ROW()                                                                                  \
    QFETCH(QByteArray, qml);                                                                       \
    QFETCH(QByteArray, script);                                                                    \
    Stage stage(qml);                                                                              \
    QVERIFY(stage.isReady);                                                                        \
    const QStringList failures = stage.script.run(script);                                         \
    QVERIFY2(failures.isEmpty(), qPrintable(failures.join(QLatin1Char('\n'))))

void tst_QuickUses::inputCountsForWhatItWentTo_data() {
    rows();
    row("button by mouse", "Button { objectName: 'x' }", "click x => x clicked");
    row("button by touch", "Button { objectName: 'x' }", "touch x => x clicked");
    row("button by key", "Button { objectName: 'x'; focus: true }", "key Space => x clicked");
    row("button by mnemonic", "Button { objectName: 'x'; text: '&Go' }", "key Alt+G => x clicked");
    row("button that can be checked", "Button { objectName: 'x'; checkable: true }",
        "click x => x checked\nclick x => x unchecked");
    row("tool button", "ToolButton { objectName: 'x' }", "click x => x clicked");
    row("round button", "RoundButton { objectName: 'x' }", "click x => x clicked");
    row("template's button",
        "AbstractButton { objectName: 'x'; width: 50; height: 20; background: Item {} }",
        "click x => x clicked");
    row("part of a button",
        "Button { objectName: 'x'; width: 100; height: 40; contentItem: Text { text: 'part' } }",
        "click text:part => x clicked");
    row("check box", "CheckBox { objectName: 'x' }",
        "click x => x checked\nclick x => x unchecked");
    row("check box with three states", "CheckBox { objectName: 'x'; tristate: true }",
        "click x => x partiallyChecked\nclick x => x checked\nclick x => x unchecked");
    row("switch by dragging", "Switch { objectName: 'x' }", "drag x 0.1,0.5 0.9,0.5 => x checked");
    row("radio button that is on already", "RadioButton { objectName: 'x'; checked: true }",
        "click x => x checked");
    row("combo box by wheel",
        "ComboBox { objectName: 'x'; width: 100; model: 3; wheelEnabled: true }",
        "wheel x -15 => x chosen");
    row("combo box by keys", "ComboBox { objectName: 'x'; model: 3; focus: true }",
        "key Down => x chosen");
    row("text field", "TextField { objectName: 'x'; focus: true }",
        "type a => x edited\nkey Return => x confirmed\nkey Backspace => x edited");
    row("text field by input method", "TextField { objectName: 'x'; focus: true }",
        "compose ni => nothing\ncommit hao => x edited");
    row("text area", "TextArea { objectName: 'x'; width: 100; height: 50; focus: true }",
        "type a => x edited\ncompose ni => nothing\ncommit hao => x edited\nkey Left => nothing");
    row("text input", "TextInput { objectName: 'x'; width: 100; focus: true }",
        "type a => x edited\nkey Ctrl+A => nothing\nkey Ctrl+X => x edited\nkey Ctrl+V => x "
        "edited");
    row("spin box by its arrows", "SpinBox { objectName: 'x' }",
        "click x 0.95,0.5 => x changed\ntouch x 0.95,0.5 => x changed\nclick x 0.05,0.5 => x "
        "changed");
    row("spin box by typing", "SpinBox { objectName: 'x'; editable: true; to: 99 }",
        "click x => nothing\nkey 7 => nothing\nkey Return => x changed");
    row("slider", "Slider { objectName: 'x'; width: 200 }",
        "drag x 0.1,0.5 0.9,0.5 => x moved\ntouchDrag x 0.9,0.5 0.1,0.5 => x moved");
    row("slider by key", "Slider { objectName: 'x'; focus: true }", "key Right => x moved");
    row("both handles of a range slider",
        "RangeSlider { objectName: 'x'; width: 300; first.value: 0.1; second.value: 0.9 }",
        "drag x 0.12,0.5 0.3,0.5 => x moved\ndrag x 0.88,0.5 0.6,0.5 => x moved");
    row("dial", "Dial { objectName: 'x' }", "drag x 0.1,0.5 0.9,0.5 => x moved");
    row("tab",
        "TabBar { width: 200; TabButton { text: '1' } TabButton { objectName: 'x'; text: '2' } }",
        "click x => x chosen");
    row("page of a swipe view",
        "Item { SwipeView { objectName: 'x'; width: 200; height: 100; spacing: 1; Item { property "
        "string title: 'a' } "
        "Item { property string title: 'b' } } }",
        "drag x 0.9,0.5 0.1,0.5 => Tab b chosen\nuntil x currentIndex 1 => nothing\ndrag x 0.1,0.5 "
        "0.9,0.5 => Tab a chosen\nuntil x currentIndex 0 => nothing");
    row("list by key",
        "ListView { objectName: 'x'; width: 100; height: 100; model: 3; focus: true; "
        "delegate: Text { text: index } }",
        "key Down => x chosen");
    row("row of a list",
        "ListView { objectName: 'x'; width: 100; height: 100; model: 3; "
        "delegate: ItemDelegate { objectName: 'row' + index } }",
        "click row1 => row1 clicked, x chosen");
    row("row with a tap handler",
        "ListView { objectName: 'x'; width: 100; height: 100; model: 3; delegate: Rectangle "
        "{ width: 100; height: 30; TapHandler { objectName: 'tap' + index } } }",
        "click tap1 => tap1 pressed, x chosen");
    row("something on a row",
        "ListView { objectName: 'x'; width: 200; height: 100; model: 3; delegate: Item "
        "{ width: 200; height: 40; Button { objectName: 'tool' + index; width: 50; height: 30 } } "
        "}",
        "click tool1 => tool1 clicked");
    row("path view",
        "PathView { objectName: 'x'; width: 200; height: 100; model: 5; "
        "path: Path { startX: 0; startY: 50; PathLine { x: 200; y: 50 } } "
        "delegate: ItemDelegate { objectName: 'row' + index; width: 30; height: 30 } }",
        "click row2 => row2 clicked, x chosen");
    row("area", "MouseArea { objectName: 'x'; width: 50; height: 50 }",
        "click x => x pressed\ntouch x => x pressed");
    row("area that is dragged", "MouseArea { objectName: 'x'; width: 200; height: 50 }",
        "drag x 0.1,0.5 0.9,0.5 => x dragged, x pressed");
    row("area with a finger that moves",
        "MultiPointTouchArea { objectName: 'x'; width: 50; height: 50 }",
        "touch x => x pressed\nclick x => x pressed");
    row("tap handler", "Item { width: 50; height: 50; TapHandler { objectName: 'x' } }",
        "click x => x pressed\ntouch x => x pressed");
    row("drag handler",
        "Item { width: 200; height: 50; DragHandler { objectName: 'x'; target: null } }",
        "click x => nothing\ndrag x 0.1,0.5 0.9,0.5 => x dragged\n"
        "touchDrag x 0.1,0.5 0.9,0.5 => x dragged");
    row("point handler", "Item { width: 50; height: 50; PointHandler { objectName: 'x' } }",
        "click x => x pressed");
    row("link", "Text { objectName: 'x'; text: '<a href=\"a\">link</a>'; onLinkActivated: {} }",
        "click x => x followed\ntouch x => x followed");
    row("link in a text that cannot be edited",
        "TextArea { objectName: 'x'; readOnly: true; textFormat: Text.RichText; "
        "text: '<a href=\"a\">link link link</a>'; onLinkActivated: {} }",
        "click x 0.2,0.5 => x followed");
    row("button on a flickable that waits",
        "Flickable { width: 100; height: 100; contentHeight: 500; pressDelay: 50; "
        "Button { objectName: 'x' } }",
        "click x => x clicked\npress x => nothing\nuntil x pressed true => nothing\n"
        "release => x clicked");
    row("button in a popup", "Item { Popup { id: p; visible: true; Button { objectName: 'x' } } }",
        "click x => x clicked");
    row("shortcut", "Item { Shortcut { objectName: 'x'; sequence: 'Ctrl+K' } }",
        "key Ctrl+K => x triggered");
}

void tst_QuickUses::inputCountsForWhatItWentTo() {
    RUN_ROW();
}

void tst_QuickUses::whatTheProgramDoesDoesNotCount_data() {
    rows();
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

void tst_QuickUses::whatTheProgramDoesDoesNotCount() {
    RUN_ROW();
}

void tst_QuickUses::slotsThatSetOthersUseNothing_data() {
    rows();
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
    row("a field that clears itself",
        "TextField { objectName: 'x'; focus: true; onAccepted: text = '' }",
        "type a => x edited\nkey Return => x confirmed");
    row("a button on a page that turns it",
        "SwipeView { id: v; width: 200; height: 100; Item { Button { objectName: 'next'; "
        "onClicked: v.incrementCurrentIndex() } } Item {} }",
        "click next => next clicked");
    row("a handler that sets others",
        "Item { Item { width: 50; height: 50; TapHandler { objectName: 'tap'; onTapped: { "
        "x.toggle(); x.toggled(); v.currentIndex = 1 } } } CheckBox { id: x; y: 60 } "
        "SwipeView { id: v; Item {} Item {} } }",
        "click tap => tap pressed\ntouch tap => tap pressed");
    row("a check box bound to another",
        "Item { CheckBox { id: a; objectName: 'a' } CheckBox { y: 50; checked: a.checked; "
        "objectName: 'b' } }",
        "click a => a checked\nclick a => a unchecked");
    row("one of a group",
        "Column { RadioButton { objectName: 'a'; checked: true } RadioButton { objectName: 'b' } }",
        "click b => b checked\nclick a => a checked");
}

void tst_QuickUses::slotsThatSetOthersUseNothing() {
    RUN_ROW();
}

void tst_QuickUses::whatCannotBeReachedIsNotUsed_data() {
    rows();
    row("disabled", "Button { objectName: 'x'; enabled: false }",
        "click x => nothing\ntouch x => nothing\nfocus x => nothing\nkey Space => nothing");
    row("disabled by what it lies in", "Item { enabled: false; Button { objectName: 'x' } }",
        "click x => nothing");
    row("hidden", "Item { Button { objectName: 'x'; visible: false } }",
        "click x => nothing\ntouch x => nothing");
    row("covered",
        "Item { Button { objectName: 'x'; width: 80; height: 40 } "
        "MouseArea { objectName: 'top'; width: 80; height: 40 } }",
        "click x => top pressed\ntouch x => top pressed");
    row("scrolled away",
        "Flickable { width: 100; height: 50; contentHeight: 300; clip: true; "
        "Button { objectName: 'x'; y: 200 } }",
        "click x => nothing");
    row("on another page of a stack",
        "StackView { id: v; width: 100; height: 100; initialItem: Item { Button { objectName: 'x' "
        "} } "
        "Component.onCompleted: push(other, StackView.Immediate); Component { id: other; Item {} } "
        "}",
        "click x => nothing");
    row("on another tab",
        "Item { Item { visible: false; MouseArea { objectName: 'x'; width: 50; height: 50 } } "
        "Item { MouseArea { objectName: 'y'; width: 50; height: 50 } } }",
        "click x => y pressed");
    row("behind a modal popup",
        "Item { width: 300; height: 200; Button { objectName: 'x' } Popup { x: 150; visible: true; "
        "modal: true; closePolicy: Popup.NoAutoClose; width: 50; height: 50 } }",
        "click x => nothing\ntouch x => nothing");
    row("an area that refuses the press",
        "Item { MouseArea { objectName: 'x'; width: 50; height: 50; onPressed: mouse.accepted = "
        "false } }",
        "click x => nothing");
    row("an area for another button",
        "MouseArea { objectName: 'x'; width: 50; height: 50; acceptedButtons: Qt.RightButton }",
        "click x => nothing\nrightClick x => x pressed");
    row("a press that leaves the button",
        "Item { Button { objectName: 'x' } Item { objectName: 'far'; x: 300; y: 200; width: 10; "
        "height: 10 } }",
        "press x => nothing\nmove far => nothing\nrelease => nothing");
    row("a text that cannot be edited",
        "TextField { objectName: 'x'; readOnly: true; focus: true }", "type a => nothing");
    row("a link without a receiver", "Text { objectName: 'x'; text: '<a href=\"a\">link</a>' }",
        "click x => nothing");
    row("beside the link",
        "Text { objectName: 'x'; text: 'beside <a href=\"a\">b</a>'; onLinkActivated: {} }",
        "click x 0.1,0.5 => nothing");
}

void tst_QuickUses::whatCannotBeReachedIsNotUsed() {
    RUN_ROW();
}

void tst_QuickUses::commandsTellTheirWays_data() {
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("ways");
    const auto row = [](const char* name, const char* script, const char* ways) {
        QTest::newRow(name) << QByteArray(script) << text(ways);
    };
    row("shortcut", "key Ctrl+S => save triggered", "shortcut");
    row("tool bar", "click tool => save triggered", "toolBar");
    row("menu by mouse",
        "call menu open => nothing\nuntil menu opened true => nothing\nclick item => save "
        "triggered",
        "menu");
    row("menu by keys",
        "call menu open => nothing\nuntil menu opened true => nothing\nkey Down => nothing\n"
        "key Return => save triggered",
        "menu");
    row("context menu",
        "call context open => nothing\nuntil context opened true => nothing\n"
        "click contextItem => save triggered",
        "contextMenu");
    row("two ways", "key Ctrl+S => save triggered\nclick tool => save triggered",
        "shortcut toolBar");
}

void tst_QuickUses::commandsTellTheirWays() {
    QFETCH(QByteArray, script);
    QFETCH(QString, ways);
    Stage stage(
        "Item { id: top; width: 300; height: 200; "
        "Action { id: save; objectName: 'save'; text: '&Save'; shortcut: 'Ctrl+S' } "
        "ToolBar { y: 100; Row { ToolButton { objectName: 'tool'; action: save } "
        "ToolButton { text: 'Menu'; Menu { objectName: 'menu'; "
        "MenuItem { objectName: 'item'; action: save } } } } } "
        "Menu { objectName: 'context'; MenuItem { objectName: 'contextItem'; action: save } } }");
    QVERIFY(stage.isReady);
    const QStringList failures = stage.script.run(script);
    QVERIFY2(failures.isEmpty(), qPrintable(failures.join(QLatin1Char('\n'))));
    QCOMPARE(stage.probe.attribute(stage.scene.object("save"), Attribute::UsedWays), ways);
}

void tst_QuickUses::whatInputBegunEndsLater_data() {
    rows();
    row("a button that repeats",
        "Button { objectName: 'x'; property int n; onClicked: ++n; autoRepeat: true; "
        "autoRepeatDelay: 1; autoRepeatInterval: 1 }",
        "press x => nothing\nuntil x n 9 => x clicked\nrelease => nothing");
    row("a button with a delay", "DelayButton { objectName: 'x'; delay: 50 }",
        "press x => nothing\nuntil x progress 1 => x clicked\nrelease => nothing");
    row("a spin box that repeats", "SpinBox { objectName: 'x'; to: 9 }",
        "press x 0.95,0.5 => nothing\nuntil x value 9 => x changed\nrelease => nothing");
    row("a long press",
        "Item { width: 50; height: 50; TapHandler { objectName: 'x'; longPressThreshold: 0.05; "
        "property bool isHeld; onLongPressed: isHeld = true } }",
        "press x => nothing\nuntil x isHeld true => x pressed\nrelease => nothing");
    row("a tumbler that goes on moving",
        "Tumbler { objectName: 'x'; model: 30; height: 200; width: 50 }",
        "drag x 0.5,0.8 0.5,0.2 => x changed\nuntil x moving false => nothing");
    row("a program that sets what is held",
        "Item { Timer { interval: 1; running: s.up.pressed; onTriggered: { c.toggle(); c.toggled() "
        "} } "
        "SpinBox { id: s; objectName: 'x'; to: 5; onValueModified: c.toggle() } "
        "CheckBox { id: c; y: 60 } }",
        "press x 0.95,0.5 => nothing\nuntil x value 5 => x changed\nrelease => nothing");
    row("a program that sets a view while it moves",
        "Item { Timer { interval: 1; running: l.moving; repeat: true; "
        "onTriggered: { t.currentIndex += 1; o.currentIndex += 1 } } "
        "ListView { id: l; objectName: 'x'; width: 100; height: 100; model: 90; "
        "delegate: Text { height: 30; text: index } } "
        "Tumbler { id: t; x: 150; model: 9 } ListView { id: o; x: 200; model: 9; delegate: Item {} "
        "} }",
        "drag x 0.5,0.9 0.5,0.1 => nothing\nuntil x moving false => nothing");
}

void tst_QuickUses::whatInputBegunEndsLater() {
    RUN_ROW();
}

void tst_QuickUses::oneActionCountsOnce_data() {
    rows();
    row("a slider's way", "Slider { objectName: 'x'; width: 200 }",
        "drag x 0.1,0.5 0.9,0.5 => x moved\nclick x 0.3,0.5 => x moved");
    row("a double click", "Button { objectName: 'x' }", "doubleClick x => x clicked, x clicked");
    row("a menu item with an action",
        "Item { Action { id: a; objectName: 'a'; text: 'A' } Menu { objectName: 'm'; "
        "MenuItem { objectName: 'i'; action: a } } }",
        "call m open => nothing\nuntil m opened true => nothing\nclick i => a triggered");
    row("a tab and its bar",
        "TabBar { width: 200; TabButton { objectName: 'a' } TabButton { objectName: 'b' } }",
        "click b => b chosen\nclick b => b chosen");
    row("a row and its list",
        "ListView { id: l; objectName: 'x'; width: 100; height: 100; model: 3; delegate: "
        "ItemDelegate { objectName: 'row' + index; onClicked: l.currentIndex = index } }",
        "click row1 => row1 clicked, x chosen");
}

void tst_QuickUses::oneActionCountsOnce() {
    RUN_ROW();
}

void tst_QuickUses::wildcardsThatCutConnectionsCutNoUses() {
    Stage stage("CheckBox { objectName: 'x' }");
    QVERIFY(stage.isReady);
    QCOMPARE(stage.script.run("click x => x checked"), QStringList());
    stage.scene.root()->disconnect();
    QCOMPARE(stage.script.run("click x => x unchecked\ntouch x => x checked"), QStringList());
}

void tst_QuickUses::aControlMayDieInItsOwnSlot_data() {
    rows();
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
    dying("accepted", "TextField { objectName: 'x'; focus: true; onAccepted: l.active = false }",
          "key Return => x confirmed");
}

void tst_QuickUses::aControlMayDieInItsOwnSlot() {
    RUN_ROW();
}

void tst_QuickUses::watchingChangesNothing_data() {
    QTest::addColumn<QByteArray>("qml");
    QTest::addColumn<QByteArray>("script");
    // Qt Quick leaves these events to others as long as nobody listens.
    row("a click on an area without a receiver",
        "Item { MouseArea { objectName: 'below'; width: 50; height: 50; onWheel: wheels++; "
        "property int wheels } MouseArea { objectName: 'top'; width: 50; height: 50 } }",
        "click top => top pressed\nwheel top 15 => nothing\nuntil below wheels 1 => nothing");
    row("a link without a receiver",
        "Item { MouseArea { objectName: 'below'; width: 200; height: 50 } "
        "Text { objectName: 'x'; text: '<a href=\"a\">link</a>' } }",
        "click x => below pressed");
}

void tst_QuickUses::watchingChangesNothing() {
    RUN_ROW();
}

void tst_QuickUses::aQuickWidgetIsLikeAWindow() {
    QuickUsesProbe probe;
    QuickScene scene("Item {}");
    QQuickWidget widget;
    QQmlComponent component(widget.engine());
    component.setData(
        "import QtQuick 2.15; import QtQuick.Controls 2.15\n"
        "Item { width: 200; height: 100; Button { objectName: 'x'; width: 80; height: 40;"
        " onClicked: box.toggle() } CheckBox { id: box; y: 50; objectName: 'box' } }",
        QUrl(text("qrc:/widget.qml")));
    widget.setContent(QUrl(), &component, component.create());
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier, QPoint(40, 20));
    QCOMPARE(probe.takeUses(), QStringList{text("x clicked")});
    QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier, QPoint(15, 70));
    QCOMPARE(probe.takeUses(), QStringList{text("box unchecked")});
}

/** Has the name of the class that Qt's bridge to D-Bus gives to what clients call. */
class AtSpiAdaptor : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;
    std::function<void()> call;

public Q_SLOTS:
    void handle() { call(); }
};

void tst_QuickUses::accessibilityClientsOperateWhatSignalsLast() {
    Stage stage(
        "Column { Button { id: b; objectName: 'x'; onClicked: { box.toggle(); box.toggled() } } "
        "CheckBox { id: box; objectName: 'box' } Slider { objectName: 'slider' } }");
    QVERIFY(stage.isReady);
    AtSpiAdaptor bridge;
    const auto call = [&](std::function<void()> action) {
        bridge.call = std::move(action);
        QMetaObject::invokeMethod(&bridge, "handle", Qt::QueuedConnection);
        QCoreApplication::processEvents();
        QEvent next(QEvent::User); // only then the call is known to be over
        QCoreApplication::sendEvent(&bridge, &next);
        return stage.probe.takeUses();
    };
    QObject* const button = stage.scene.object("x");
    QCOMPARE(call([&] { QMetaObject::invokeMethod(button, "clicked"); }),
             QStringList{text("x clicked")});
    QObject* const box = stage.scene.object("box");
    const bool wasChecked = box->property("checked").toBool();
    QCOMPARE(call([&] { QMetaObject::invokeMethod(box, "toggle"); }),
             QStringList{text(wasChecked ? "box unchecked" : "box checked")});
    QObject* const slider = stage.scene.object("slider");
    QCOMPARE(call([&] { slider->setProperty("value", 0.5); }), QStringList{text("slider moved")});
}

int main(int argc, char* argv[]) {
    TestLib::DeliveringApplication application(argc, argv);
    tst_QuickUses test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_quickuses.moc"
