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

class tst_QuickGroups : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsMadeAgainHasAGroup_data();
    void whatIsMadeAgainHasAGroup();
    void rowsBeyondAsManyAsAnInterfaceHasAreOne();
};

void tst_QuickGroups::whatIsMadeAgainHasAGroup_data() {
    QTest::addColumn<QByteArray>("qml");
    QTest::addColumn<QString>("expected");

    const auto add = [](const char* tag, const char* qml, const char* expected) {
        QTest::newRow(tag) << QByteArray(qml) << text(expected);
    };
    add("nothing", "Item { Column { Button { text: 'a' } } }", "Button \"a\"");
    add("repeater", "Column { Repeater { id: r; model: 2; Button { text: index } } }",
        "Button \"0\" group=Scene.qml:r/Button, Button \"1\" group=Scene.qml:r/Button");
    add("repeater without an id",
        "Column { id: c; Repeater { model: 1; Button { text: 'a' } } Button { text: 'b' } }",
        "Button \"a\" group=Scene.qml:c/QQuickRepeater/Button, Button \"b\"");
    add("list",
        "ListView { id: l; width: 99; height: 99; model: 1; delegate: Row { Button { text: 'a' } "
        "CheckBox { id: x; text: 'b' } } }",
        "List, Button \"a\" group=Scene.qml:l/QQuickRow/Button, CheckBox \"b\" "
        "group=Scene.qml:l/QQuickRow/x");
    add("like ones in a row",
        "Repeater { id: r; model: 1; Row { Button { text: 'a' } Button { text: 'b' } } }",
        "Button \"a\" group=Scene.qml:r/QQuickRow/Button, Button \"b\" "
        "group=Scene.qml:r/QQuickRow/Button[1]");
    add("path",
        "PathView { id: p; width: 99; height: 99; model: 1; path: Path { PathLine { x: 9; y: 9 } } "
        "delegate: Button { text: 'a' } }",
        "List, Button \"a\" group=Scene.qml:p/Button");
    add("rows in rows",
        "Column { Repeater { id: r; model: 1; Row { Repeater { id: s; model: 1; Button { text: 'a' "
        "} } } } }",
        "Button \"a\" group=Scene.qml:r/QQuickRow/s/Button");
    add("loader",
        "Item { Loader { id: l; width: 9; height: 9; sourceComponent: Row { Button { text: 'a' } } "
        "} }",
        "Button \"a\" group=Scene.qml:l/Scene.qml:QQuickRow/Button");
    add("tab bar",
        "TabBar { TabButton { text: 'a' } Repeater { id: r; model: 1; TabButton { text: 'b' } } }",
        "Tab \"a\", Tab \"b\" group=Scene.qml:r/TabButton");
    add("menu", "Menu { MenuItem { text: 'a' } }", "Menu, Command \"a\"");
    add("button in a row's button",
        "ListView { id: l; width: 99; height: 99; model: 1; "
        "delegate: ItemDelegate { text: 'a'; Button { text: 'b' } } }",
        "List, Button \"a\" group=Scene.qml:l/ItemDelegate, Button \"b\" "
        "group=Scene.qml:l/ItemDelegate/Button");
}

void tst_QuickGroups::whatIsMadeAgainHasAGroup() {
    QFETCH(QByteArray, qml);
    QFETCH(QString, expected);
    SurveyProbe probe;
    QuickScene scene("Item { width: 400; height: 300; " + qml + " }", controls2);
    QVERIFY(scene.show());
    QTRY_VERIFY(!probe.tree(scene.window()).isEmpty());
    QCOMPARE(probe.below(scene.window(), {text("group")}).join(text(", ")), expected);
}

void tst_QuickGroups::rowsBeyondAsManyAsAnInterfaceHasAreOne() {
    SurveyProbe probe;
    QuickScene scene(
        "Column { Repeater { objectName: 'rows'; model: 60; Button { text: index } } }", controls2);
    QVERIFY(scene.show());
    QTRY_COMPARE(probe.tree(scene.window()).count(text("Button")), 50);
    QObject* const rows = scene.item("rows");
    QQuickItem* last = nullptr;
    QMetaObject::invokeMethod(rows, "itemAt", Q_RETURN_ARG(QQuickItem*, last), Q_ARG(int, 59));
    QCOMPARE(probe.line(last), text("Button \"49\""));
    QCOMPARE(probe.watched(last), 1);
}

QTEST_MAIN(tst_QuickGroups)
#include "tst_quickgroups.moc"
