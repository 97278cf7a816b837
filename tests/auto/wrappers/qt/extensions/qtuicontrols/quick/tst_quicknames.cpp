// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/quickscene.h"
#include "testlib/surveyprobe.h"
#include "testlib/testcase.h"

#include <QTest>

using namespace Vorsk::UIControls;
using TestLib::QuickScene;
using TestLib::SurveyProbe;

namespace {

constexpr auto controls2 = QuickScene::Imports::Controls2;

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

} // namespace

class tst_QuickNames : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aControlIsNamedByAllThatNamesIt_data();
    void aControlIsNamedByAllThatNamesIt();
    void whatHidesItsInputIsSensitive();
    void whatHidesItsInputLaterStaysSensitive();
    void mnemonicsAndMarkupAreNoPartOfACaption();
};

void tst_QuickNames::aControlIsNamedByAllThatNamesIt_data() {
    QTest::addColumn<QByteArray>("qml");
    QTest::addColumn<QString>("expected");

    const auto add = [](const char* tag, const char* qml, const char* expected) {
        QTest::newRow(tag) << QByteArray(qml) << text(expected);
    };
    add("object name", "Item { Slider { objectName: 'x' } }", "Slider objectName=x");
    add("id", "Item { Slider { id: volume } }", "Slider qmlId=volume");
    add("placeholder", "Item { TextField { placeholderText: 'Name' } }",
        "TextInput placeholder=Name");
    add("tool tip", "Item { Button { text: 'OK'; ToolTip.text: 'tip' } }",
        "Button \"OK\" toolTip=tip");
    add("accessible name", "Item { Slider { Accessible.name: 'a'; Accessible.description: 'b' } }",
        "Slider accessibleName=a description=b");
    add("text before it", "Row { Label { text: 'Volume' } Slider {} }", "Slider label=Volume");
    add("text before the container", "Row { Label { text: 'Volume' } Item { Slider {} } }",
        "Slider label=Volume");
    add("text before another", "Row { Label { text: 'Name' } Button { text: 'OK' } Slider {} }",
        "Button \"OK\", Slider");
    add("title of a group", "GroupBox { title: 'Sound'; Slider {} }", "Slider label=Sound");
    add("text in a group",
        "GroupBox { title: 'Sound'; Row { Label { text: 'Volume' } Slider {} } }",
        "Slider label=Volume");
    add("placeholder in a group",
        "GroupBox { title: 'Proxy'; TextField { placeholderText: 'Host' } }",
        "TextInput label=Proxy placeholder=Host");
    add("title of a page", "Page { title: 'Sound'; Slider {} }", "Slider label=Sound");
    add("placeholder on a page", "Page { title: 'Proxy'; TextField { placeholderText: 'Host' } }",
        "TextInput placeholder=Host");
    add("placeholder in a group on a page",
        "Page { title: 'Net'; GroupBox { title: 'Proxy'; TextField { placeholderText: 'Host' } } }",
        "TextInput label=Proxy placeholder=Host");
    add("text on a mouse area", "Rectangle { Text { text: 'Go' } MouseArea {} }", "Area label=Go");
    add("text below a mouse area", "MouseArea { Rectangle { Text { text: 'Go' } } }",
        "Area label=Go");
    add("caption and text before it", "Row { Label { text: 'No' } Button { text: 'OK' } }",
        "Button \"OK\"");
}

void tst_QuickNames::aControlIsNamedByAllThatNamesIt() {
    QFETCH(QByteArray, qml);
    QFETCH(QString, expected);
    SurveyProbe probe;
    QuickScene scene(qml, controls2);
    QVERIFY(scene.show());
    QTRY_VERIFY(!probe.tree(scene.window()).isEmpty());
    const QStringList names{text("accessibleName"), text("description"), text("label"),
                            text("objectName"),     text("placeholder"), text("qmlId"),
                            text("toolTip")};
    QCOMPARE(probe.below(scene.window(), names).join(text(", ")), expected);
}

void tst_QuickNames::whatHidesItsInputIsSensitive() {
    SurveyProbe probe;
    QuickScene scene("Row { TextField { objectName: 'a'; echoMode: TextInput.Password } TextField "
                     "{ objectName: 'b' } }",
                     controls2);
    QVERIFY(scene.show());
    QTRY_COMPARE(probe.attribute(scene.item("a"), Attribute::Sensitive), text("true"));
    QVERIFY(probe.attribute(scene.item("b"), Attribute::Sensitive).isNull());
}

void tst_QuickNames::whatHidesItsInputLaterStaysSensitive() {
    SurveyProbe probe;
    QuickScene scene("TextField { objectName: 'a' }", controls2);
    QVERIFY(scene.show());
    QTRY_VERIFY(probe.element(scene.item("a")) != nullptr);
    constexpr int password = 2;
    scene.item("a")->setProperty("echoMode", password);
    QTRY_COMPARE(probe.attribute(scene.item("a"), Attribute::Sensitive), text("true"));
    scene.item("a")->setProperty("echoMode", 0);
    scene.item("a")->setEnabled(false);
    QTRY_COMPARE(probe.attribute(scene.item("a"), Attribute::Enabled), text("false"));
    QCOMPARE(probe.attribute(scene.item("a"), Attribute::Sensitive), text("true"));
}

void tst_QuickNames::mnemonicsAndMarkupAreNoPartOfACaption() {
    SurveyProbe probe;
    QuickScene scene("Column { Button { text: '&Save && go' } Button { text: '<b>Bold</b> text' } "
                     "Button { text: 'a < b' } }",
                     controls2);
    QVERIFY(scene.show());
    QTRY_COMPARE(
        probe.tree(scene.window()),
        text(
            "Window {seen}\n  Button \"Save & go\"\n  Button \"Bold text\"\n  Button \"a < b\"\n"));
}

QTEST_MAIN(tst_QuickNames)
#include "tst_quicknames.moc"
