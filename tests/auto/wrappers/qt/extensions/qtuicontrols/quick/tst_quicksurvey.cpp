// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/quickscene.h"
#include "testlib/surveyprobe.h"
#include "testlib/testcase.h"

#include <QTest>

using namespace Vorsk::UIControls;
using TestLib::QuickScene;
using TestLib::SurveyProbe;

class tst_QuickSurvey : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyControlIsKnownByWhatItExtends_data();
    void everyControlIsKnownByWhatItExtends();
    void namesOfClassesAreUtf8();
};

void tst_QuickSurvey::everyControlIsKnownByWhatItExtends_data() {
    QTest::addColumn<QuickScene::Imports>("imports");
    QTest::addColumn<QByteArray>("qml");
    QTest::addColumn<QString>("expected");

    const auto add = [](const char* tag, QuickScene::Imports imports, const char* qml,
                        const char* expected) {
        QTest::newRow(tag) << imports << QByteArray(qml) << QString::fromLatin1(expected);
    };
    const auto two = QuickScene::Imports::Controls2;
    add("button", two, "Button { text: '&OK' }", "Button \"OK\"");
    add("round button", two, "RoundButton { text: 'OK' }", "Button \"OK\"");
    add("tool button", two, "ToolButton { text: 'OK' }", "Button \"OK\"");
    add("delay button", two, "DelayButton { text: 'OK' }", "Button \"OK\"");
    add("abstract button", two, "AbstractButton { text: 'OK' }", "Button \"OK\"");
    add("item delegate", two, "ItemDelegate { text: 'OK' }", "Button \"OK\"");
    add("swipe delegate", two, "SwipeDelegate { text: 'OK' }", "Button \"OK\"");
    add("check box", two, "CheckBox { text: 'OK' }", "CheckBox \"OK\"");
    add("check delegate", two, "CheckDelegate { text: 'OK' }", "CheckBox \"OK\"");
    add("radio button", two, "RadioButton { text: 'OK' }", "RadioButton \"OK\"");
    add("radio delegate", two, "RadioDelegate { text: 'OK' }", "RadioButton \"OK\"");
    add("switch", two, "Switch { text: 'OK' }", "Switch \"OK\"");
    add("switch delegate", two, "SwitchDelegate { text: 'OK' }", "Switch \"OK\"");
    add("tab button", two, "TabBar { TabButton { text: 'OK' } }", "Tab \"OK\"");
    add("tab bar and the swipe view that it goes with", two,
        "Column { TabBar { currentIndex: v.currentIndex; TabButton { text: 'A' } TabButton { text: "
        "'B' } } SwipeView { id: v; Item {} Item {} } }",
        "Tab \"A\"\nTab \"B\"\nPage\nPage");
    add("tab bar with fewer tabs than the swipe view has pages", two,
        "Column { TabBar { TabButton { text: 'A' } } SwipeView { Item { property string title: 'a' "
        "} Item { property string title: 'b' } } }",
        "Tab \"A\"\nPage \"a\"\nPage \"b\"\nTab \"a\"\nTab \"b\"");
    add("combo box", two, "ComboBox { model: 3 }", "ComboBox");
    add("combo box with entries", two, "ComboBox { model: ['a', 'b'] }",
        "ComboBox\nOption \"a\"\nOption \"b\"");
    add("combo box with a list model", two,
        "ComboBox { textRole: 'name'; model: ListModel { ListElement { name: 'a'; other: 1 } } }",
        "ComboBox\nOption \"a\"");
    add("combo box with data", two, "ComboBox { model: Array(51).fill('a') }", "ComboBox");
    add("spin box", two, "SpinBox { editable: true }", "SpinBox");
    add("tumbler", two, "Tumbler { model: 3 }", "SpinBox");
    add("slider", two, "Slider {}", "Slider");
    add("range slider", two, "RangeSlider {}", "Slider");
    add("dial", two, "Dial {}", "Dial");
    add("text field", two, "TextField { text: 'typed' }", "TextInput");
    add("text area", two, "TextArea { text: 'typed' }", "TextInput");
    add("text area that scrolls", two, "ScrollView { TextArea { text: 'typed' } }", "TextInput");
    add("read-only text field", two, "TextField { readOnly: true }", "");
    add("label with a link", two, "Label { text: '<a href=\"x\">here</a>' }", "Link \"here\"");
    add("label", two, "Label { text: 'text' }", "");
    add("progress bar", two, "ProgressBar {}", "");
    add("scroll bar", two, "ScrollBar {}", "");
    add("frame around a button", two, "Frame { Button { text: 'OK' } }", "Button \"OK\"");
    add("group box around a button", two, "GroupBox { title: 'G'; Button { text: 'OK' } }",
        "Button \"OK\"");
    add("button box", two, "DialogButtonBox { standardButtons: DialogButtonBox.Ok }",
        "Button \"OK\"");

    const auto templates = QuickScene::Imports::Templates2;
    add("templates", templates,
        "Item { T.Button { text: 'a' } T.CheckBox { text: 'b' } T.TextField {} T.Slider {} }",
        "Button \"a\"\nCheckBox \"b\"\nTextInput\nSlider");

    const auto none = QuickScene::Imports::Quick;
    add("mouse area", none, "Rectangle { Text { text: 'Go' } MouseArea {} }", "Area");
    add("mouse area on a text", none, "Text { text: 'Go'; MouseArea {} }", "Area");
    add("mouse area that only hovers", none, "Item { MouseArea { acceptedButtons: Qt.NoButton } }",
        "");
    add("control in a mouse area", none, "MouseArea { TextInput {} }", "Area\nTextInput");
    add("touch area", none, "Item { MultiPointTouchArea {} PinchArea {} }", "Area\nArea");
    add("pointer handlers", QuickScene::Imports::Pointers,
        "Item { TapHandler {} DragHandler {} HoverHandler {} }", "Area\nArea");
    add("text input", none, "TextInput { text: 'typed' }", "TextInput");
    add("text edit", none, "TextEdit { text: 'typed' }", "TextInput");
    add("read-only text edit", none, "TextEdit { readOnly: true }", "");
    add("list", none, "ListView { width: 50; height: 50 }", "List");
    add("grid", none, "GridView { width: 50; height: 50 }", "List");
    add("path", none, "PathView { width: 50; height: 50 }", "List");
    add("shortcut", none, "Item { Shortcut { sequence: 'Ctrl+K' } }", "Command \"Ctrl+K\"");

    const auto one = QuickScene::Imports::Controls1;
    add("button of the first generation", one, "Button { text: '&OK' }", "Button \"OK\"");
    add("tool button of the first generation", one, "ToolButton { text: 'OK' }", "Button \"OK\"");
    add("check box of the first generation", one, "CheckBox { text: 'OK' }", "CheckBox \"OK\"");
    add("radio button of the first generation", one, "RadioButton { text: 'OK' }",
        "RadioButton \"OK\"");
    add("switch of the first generation", one, "Switch {}", "Switch");
    add("combo box of the first generation", one, "ComboBox { model: ['a', 'b'] }",
        "ComboBox\nOption \"a\"\nOption \"b\"");
    add("text field of the first generation", one, "TextField { text: 'typed' }", "TextInput");
    add("text area of the first generation", one, "TextArea { text: 'typed' }", "TextInput");
    add("spin box of the first generation", one, "SpinBox {}", "SpinBox");
    add("slider of the first generation", one, "Slider {}", "Slider");
    add("table of the first generation", one,
        "TableView { TableViewColumn { role: 'a'; title: 'A' } }", "Table");
    add("tree of the first generation", one,
        "TreeView { TableViewColumn { role: 'a'; title: 'A' } }", "Tree");
    add("calendar of the first generation", one, "Calendar {}", "Table");
    add("group box of the first generation", one, "GroupBox { title: 'G'; Button { text: 'OK' } }",
        "Button \"OK\"");
    add("checkable group box of the first generation", one,
        "GroupBox { title: 'G'; checkable: true; Button { text: 'OK' } }",
        "GroupBox \"G\"\nButton \"OK\"");
}

void tst_QuickSurvey::everyControlIsKnownByWhatItExtends() {
    QFETCH(QuickScene::Imports, imports);
    QFETCH(QByteArray, qml);
    QFETCH(QString, expected);
    SurveyProbe probe;
    QuickScene scene(qml, imports);
    QVERIFY(scene.show());
    QTRY_VERIFY(probe.line(scene.window()).contains(QLatin1String("seen")));
    QCOMPARE(probe.below(scene.window()).join(QLatin1Char('\n')), expected);
}

void tst_QuickSurvey::namesOfClassesAreUtf8() {
    const QString file = QStringLiteral(u"\u00dcbersicht");
    SurveyProbe probe;
    QuickScene scene("Item { width: 99; height: 99; ComboBox { id: c; objectName: 'c'; model: ['a']"
                     "  } Repeater { model: 1; Button { property int own; objectName: 'b' } } }",
                     QuickScene::Imports::Controls2, file);
    QVERIFY(scene.show());
    const UIElement* const button = probe.element(scene.item("b"));
    QVERIFY(button);
    QCOMPARE(probe.attribute(scene.item("b"), Attribute::Group).section(QLatin1Char('.'), 0, 0),
             file);
    QuickScene one("Button { property int own }", QuickScene::Imports::Controls2, file);
    QVERIFY(one.show());
    QVERIFY(probe.element(one.root()));
    QVERIFY2(probe.element(one.root())->concreteType().startsWith(file + QLatin1String("_QML")),
             qPrintable(probe.element(one.root())->concreteType()));
}

QTEST_MAIN(tst_QuickSurvey)
#include "tst_quicksurvey.moc"
