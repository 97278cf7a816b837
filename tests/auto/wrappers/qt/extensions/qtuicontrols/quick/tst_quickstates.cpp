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

class tst_QuickStates : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatADisabledItemHoldsIsDisabled();
    void aMouseAreaHasAPropertyOfItsOwn();
    void aPointerHandlerIsDisabledWithItsItem();
    void anActionIsDisabledWithItsButtons();
    void anActionOfTheFirstGenerationIsOneCommand();
    void whatAHiddenItemHoldsIsHidden();
    void aClosedViewDoesNotHideItsControls();
    void aCaptionIsFollowed();
    void aTitleIsFollowed();
    void whatDiesBeforeTheNextFrameIsForgotten();
    void connectionsThatTheApplicationCutsAreNoHarm();
};

void tst_QuickStates::whatADisabledItemHoldsIsDisabled() {
    SurveyProbe probe;
    QuickScene scene(
        "Item { objectName: 'outer'; enabled: false; Button { objectName: 'button' } }", controls2);
    QVERIFY(scene.show());
    QTRY_COMPARE(probe.attribute(scene.item("button"), Attribute::Enabled), text("false"));
    scene.item("outer")->setEnabled(true);
    QTRY_VERIFY(probe.attribute(scene.item("button"), Attribute::Enabled).isNull());
}

void tst_QuickStates::aMouseAreaHasAPropertyOfItsOwn() {
    SurveyProbe probe;
    QuickScene scene(
        "Item { objectName: 'outer'; MouseArea { objectName: 'area'; enabled: false } }");
    QVERIFY(scene.show());
    QQuickItem* const area = scene.item("area");
    QTRY_COMPARE(probe.attribute(area, Attribute::Enabled), text("false"));
    area->setProperty("enabled", true);
    QTRY_VERIFY(probe.attribute(area, Attribute::Enabled).isNull());
    scene.item("outer")->setEnabled(false);
    QTRY_COMPARE(probe.attribute(area, Attribute::Enabled), text("false"));
}

void tst_QuickStates::aPointerHandlerIsDisabledWithItsItem() {
    SurveyProbe probe;
    QuickScene scene(
        "Item { objectName: 'outer'; enabled: false; TapHandler { objectName: 'tap' } }",
        QuickScene::Imports::Pointers);
    QVERIFY(scene.show());
    QObject* const tap = scene.item("outer")->findChild<QObject*>(text("tap"));
    QTRY_COMPARE(probe.attribute(tap, Attribute::Enabled), text("false"));
}

void tst_QuickStates::anActionIsDisabledWithItsButtons() {
    SurveyProbe probe;
    QuickScene scene(
        "Item { Action { id: save; objectName: 'save'; text: '&Save'; shortcut: 'Ctrl+S' } "
        "ToolButton { objectName: 'button'; action: save } Menu { MenuItem { action: save } } }",
        controls2);
    QVERIFY(scene.show());
    QObject* const save = scene.object("save");
    const QStringList shown{text("enabled"), text("ways")};
    QTRY_COMPARE(probe.line(save, shown), text("Command \"Save\" ways=\"menu shortcut toolBar\""));
    QCOMPARE(probe.element(scene.item("button")), probe.element(save));
    save->setProperty("enabled", false);
    QTRY_COMPARE(probe.line(save, shown),
                 text("Command \"Save\" enabled=false ways=\"menu shortcut toolBar\""));
}

void tst_QuickStates::anActionOfTheFirstGenerationIsOneCommand() {
    SurveyProbe probe;
    QuickScene scene("Item { Action { id: save; text: '&Save'; shortcut: 'Ctrl+S' } "
                     "ToolButton { action: save } Menu { title: 'M'; MenuItem { action: save } } }",
                     QuickScene::Imports::Controls1);
    QVERIFY(scene.show());
    QTRY_COMPARE(
        probe.below(scene.window(), {text("ways")}),
        (QStringList{text("Command \"Save\" ways=\"menu shortcut toolBar\""), text("Menu \"M\"")}));
}

void tst_QuickStates::whatAHiddenItemHoldsIsHidden() {
    SurveyProbe probe;
    QuickScene scene("Item { Item { objectName: 'outer'; Button { objectName: 'button' } } }",
                     controls2);
    QVERIFY(scene.show());
    QTRY_VERIFY(probe.element(scene.item("button")) != nullptr);
    QVERIFY(probe.attribute(scene.item("button"), Attribute::Hidden).isNull());
    scene.item("outer")->setVisible(false);
    QTRY_COMPARE(probe.attribute(scene.item("button"), Attribute::Hidden), text("true"));
    scene.item("outer")->setVisible(true);
    QTRY_VERIFY(probe.attribute(scene.item("button"), Attribute::Hidden).isNull());
}

void tst_QuickStates::aClosedViewDoesNotHideItsControls() {
    SurveyProbe probe;
    QuickScene scene(
        "Item { width: 300; height: 200; Popup { objectName: 'popup'; enter: null; exit: null; "
        "Row { Button { text: 'a' } Button { text: 'b'; visible: false } } } }",
        controls2);
    QVERIFY(scene.show());
    QObject* const popup = scene.object("popup");
    const QStringList shown{text("hidden")};
    QTRY_COMPARE(probe.tree(popup, shown), text("Popup\n  Button \"a\"\n  Button \"b\"\n"));
    const QString below = text("  Button \"a\"\n  Button \"b\" hidden=true\n");
    QMetaObject::invokeMethod(popup, "open");
    QTRY_COMPARE(probe.tree(popup, shown), text("Popup {seen}\n") + below);
    QMetaObject::invokeMethod(popup, "close");
    QTRY_VERIFY(probe.attribute(popup, Attribute::Showing).isNull());
    QCOMPARE(probe.tree(popup, shown), text("Popup {seen}\n") + below);
}

void tst_QuickStates::aCaptionIsFollowed() {
    SurveyProbe probe;
    QuickScene scene("Button { objectName: 'button'; text: 'a' }", controls2);
    QVERIFY(scene.show());
    QTRY_COMPARE(probe.line(scene.item("button")), text("Button \"a\""));
    scene.item("button")->setProperty("text", text("b"));
    QTRY_COMPARE(probe.line(scene.item("button")), text("Button \"b\""));
}

void tst_QuickStates::aTitleIsFollowed() {
    SurveyProbe probe;
    QuickScene scene("Item {}");
    QVERIFY(scene.show());
    QTRY_COMPARE(probe.line(scene.window()), text("Window {seen}"));
    scene.window()->setTitle(text("Title"));
    QTRY_COMPARE(probe.line(scene.window()), text("Window \"Title\" {seen}"));
}

void tst_QuickStates::whatDiesBeforeTheNextFrameIsForgotten() {
    SurveyProbe probe;
    QuickScene scene(
        "Item { objectName: 'outer'; Button { objectName: 'a' } Button { objectName: 'b' } }",
        controls2);
    QVERIFY(scene.show());
    QTRY_VERIFY(probe.element(scene.item("b")) != nullptr);
    scene.item("a")->setEnabled(false);
    scene.item("b")->setEnabled(false);
    delete scene.item("a");
    QTRY_COMPARE(probe.attribute(scene.item("b"), Attribute::Enabled), text("false"));
}

void tst_QuickStates::connectionsThatTheApplicationCutsAreNoHarm() {
    SurveyProbe probe;
    QuickScene scene("Item { objectName: 'outer'; Button { objectName: 'a' } }", controls2);
    QVERIFY(scene.show());
    QTRY_VERIFY(probe.element(scene.item("a")) != nullptr);
    QQuickItem* const button = scene.item("a");
    const QString before = probe.line(button);
    QObject::disconnect(button, nullptr, nullptr, nullptr);
    QObject::disconnect(scene.item("outer"), nullptr, nullptr, nullptr);
    delete button;
    QVERIFY(probe.element(button) == nullptr);
    std::unique_ptr<QObject> other(scene.create("Button { objectName: 'c' }", controls2));
    qobject_cast<QQuickItem*>(other.get())->setParentItem(scene.window()->contentItem());
    QTRY_COMPARE(probe.line(other.get()), before);
}

QTEST_MAIN(tst_QuickStates)
#include "tst_quickstates.moc"
