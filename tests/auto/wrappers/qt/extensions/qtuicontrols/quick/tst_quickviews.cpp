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

constexpr auto controls1 = QuickScene::Imports::Controls1;
constexpr auto controls2 = QuickScene::Imports::Controls2;

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

} // namespace

class tst_QuickViews : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void viewsAreKnownBeforeTheyWereOpened_data();
    void viewsAreKnownBeforeTheyWereOpened();
    void aWindowIsSeenEachTimeItComesUp();
    void aPopupIsSeenEachTimeItOpens();
    void aTransparentPopupIsNotSeen();
    void aViewInAHiddenWindowIsNotSeen();
    void thePageOfAStackIsSeenWhenItIsCurrent();
    void thePageOfASwipeViewIsSeenWhenItIsCurrent();
    void aPageThatIsMadeAgainIsTheSame();
    void aWindowWithinAWindowIsAViewOfItsOwn();
    void whatALoaderShowsIsAPageWhenItCoversTheWindow();
    void whatIsMadeLaterIsFound();
    void aPopupThatIsMadeLaterIsFoundWhenItOpens();
    void aViewOfTheFirstGenerationIsKnown();
};

void tst_QuickViews::viewsAreKnownBeforeTheyWereOpened_data() {
    QTest::addColumn<QByteArray>("qml");
    QTest::addColumn<QString>("expected");

    const auto add = [](const char* tag, const char* qml, const char* expected) {
        QTest::newRow(tag) << QByteArray(qml) << text(expected);
    };
    add("popup", "Item { Popup { Button { text: 'OK' } } }",
        "Window {seen}\n  Popup\n    Button \"OK\"\n");
    add("dialog", "Item { Dialog { title: 'D'; standardButtons: Dialog.Ok } }",
        "Window {seen}\n  Dialog \"D\"\n    Button \"OK\"\n");
    add("drawer", "Item { Drawer { CheckBox { text: 'OK' } } }",
        "Window {seen}\n  Drawer\n    CheckBox \"OK\"\n");
    add("menu",
        "Item { Menu { title: 'M'; MenuItem { text: 'A' } Menu { title: 'S'; MenuItem { text: 'B' "
        "} } } }",
        "Window {seen}\n  Menu \"M\"\n    Menu \"S\"\n      Command \"B\"\n    Command \"A\"\n");
    add("menu of a button", "Button { text: 'Open'; Menu { MenuItem { text: 'A' } } }",
        "Window {seen}\n  Button \"Open\"\n  Menu\n    Command \"A\"\n");
    add("menu bar",
        "MenuBar { Menu { title: '&File'; Action { text: '&New'; shortcut: 'Ctrl+N' } } }",
        "Window {seen}\n  Menu \"File\"\n    Command \"New\"\n");
    add("tool tip", "Button { text: 'OK'; ToolTip { text: 'tip' } }",
        "Window {seen}\n  Button \"OK\"\n");
    add("popup of a combo box", "ComboBox { model: 2 }", "Window {seen}\n  ComboBox\n");
    add("popup in a popup", "Item { Popup { Popup { Button { text: 'OK' } } } }",
        "Window {seen}\n  Popup\n    Popup\n      Button \"OK\"\n");
    add("stack of layouts",
        "StackLayout { width: 100; height: 100; Item { Button { text: 'A' } } Item { Button { "
        "text: 'B' } } }",
        "Window {seen}\n  Page {seen}\n    Button \"A\"\n  Page\n    Button \"B\"\n");
    add("swipe view",
        "SwipeView { width: 100; height: 100; Page { title: 'A'; Button { text: 'a' } } Page { "
        "title: 'B' } }",
        "Window {seen}\n  Page \"A\" {seen}\n    Button \"a\"\n  Page \"B\"\n  Tab \"A\"\n  Tab "
        "\"B\"\n");
    add("swipe view that cannot be swiped",
        "SwipeView { interactive: false; width: 100; height: 100; Pane {} Pane {} }",
        "Window {seen}\n  Page {seen}\n  Page\n");
    add("stack view",
        "StackView { width: 100; height: 100; initialItem: Page { title: 'A'; Button { text: 'a' } "
        "} }",
        "Window {seen}\n  Page \"A\" {seen}\n    Button \"a\"\n");
    add("page that is a control", "StackView { width: 100; height: 100; initialItem: ListView {} }",
        "Window {seen}\n  Page {seen}\n    List\n");
}

void tst_QuickViews::viewsAreKnownBeforeTheyWereOpened() {
    QFETCH(QByteArray, qml);
    QFETCH(QString, expected);
    SurveyProbe probe;
    QuickScene scene(qml, controls2);
    QVERIFY(scene.show());
    QTRY_COMPARE(probe.tree(scene.window()), expected);
}

void tst_QuickViews::aWindowIsSeenEachTimeItComesUp() {
    SurveyProbe probe;
    QuickScene scene("Item {}");
    QVERIFY(scene.show());
    const QStringList showing{text("showing")};
    QTRY_COMPARE(probe.line(scene.window(), showing), text("Window showing=true {seen}"));
    scene.window()->hide();
    QTRY_COMPARE(probe.line(scene.window(), showing), text("Window {seen}"));
    QVERIFY(scene.show());
    QTRY_COMPARE(probe.line(scene.window(), showing), text("Window showing=true {seen=2}"));
}

void tst_QuickViews::aPopupIsSeenEachTimeItOpens() {
    SurveyProbe probe;
    QuickScene scene(
        "Item { width: 300; height: 200; Popup { objectName: 'popup'; width: 50; height: 50 } }",
        controls2);
    QVERIFY(scene.show());
    QObject* const popup = scene.object("popup");
    QTRY_COMPARE(probe.line(popup), text("Popup"));
    for (const char* const expected :
         {"Popup showing=true {seen}", "Popup showing=true {seen=2}"}) {
        QMetaObject::invokeMethod(popup, "open");
        QTRY_COMPARE(probe.line(popup, {text("showing")}), text(expected));
        QMetaObject::invokeMethod(popup, "close");
        QTRY_VERIFY(probe.attribute(popup, Attribute::Showing).isNull());
    }
}

void tst_QuickViews::aTransparentPopupIsNotSeen() {
    SurveyProbe probe;
    QuickScene scene(
        "Item { width: 300; height: 200; Popup { objectName: 'popup'; width: 50; height: 50; "
        "enter: null; opacity: 0 } "
        "Popup { objectName: 'other'; width: 50; height: 50; enter: null } }",
        controls2);
    QVERIFY(scene.show());
    QMetaObject::invokeMethod(scene.object("popup"), "open");
    QMetaObject::invokeMethod(scene.object("other"), "open");
    QTRY_COMPARE(probe.line(scene.object("other")), text("Popup {seen}"));
    QCOMPARE(probe.line(scene.object("popup")), text("Popup"));
}

void tst_QuickViews::aViewInAHiddenWindowIsNotSeen() {
    SurveyProbe probe;
    QuickScene scene("Item { Window { objectName: 'other'; width: 100; height: 100; "
                     "StackLayout { objectName: 'stack'; Item { objectName: 'page' } } } }",
                     controls2);
    QVERIFY(scene.show());
    QTRY_COMPARE(probe.tree(scene.object("other")), text("Window\n  Page\n"));
}

void tst_QuickViews::thePageOfAStackIsSeenWhenItIsCurrent() {
    SurveyProbe probe;
    QuickScene scene("StackLayout { width: 100; height: 100; objectName: 'stack'; "
                     "Item { objectName: 'a' } Item { objectName: 'b' } }",
                     controls2);
    QVERIFY(scene.show());
    QTRY_COMPARE(probe.line(scene.item("a")), text("Page {seen}"));
    QCOMPARE(probe.line(scene.item("b")), text("Page"));
    scene.item("stack")->setProperty("currentIndex", 1);
    QTRY_COMPARE(probe.line(scene.item("b"), {text("showing")}), text("Page showing=true {seen}"));
    QCOMPARE(probe.line(scene.item("a"), {text("showing")}), text("Page {seen}"));
}

void tst_QuickViews::thePageOfASwipeViewIsSeenWhenItIsCurrent() {
    SurveyProbe probe;
    QuickScene scene("SwipeView { width: 100; height: 100; objectName: 'view'; "
                     "Pane { objectName: 'a' } Pane { objectName: 'b' } Pane { objectName: 'c' } }",
                     controls2);
    QVERIFY(scene.show());
    QTRY_COMPARE(probe.line(scene.item("a")), text("Page {seen}"));
    scene.item("view")->setProperty("currentIndex", 2);
    QTRY_COMPARE(probe.line(scene.item("c")), text("Page {seen}"));
    QCOMPARE(probe.line(scene.item("b")), text("Page"));
}

void tst_QuickViews::aPageThatIsMadeAgainIsTheSame() {
    SurveyProbe probe;
    QuickScene scene(
        "StackView { id: stack; objectName: 'stack'; width: 100; height: 100; initialItem: Item {} "
        "Component { id: boxes; Column { objectName: 'page'; "
        "CheckBox { text: 'a' } CheckBox { text: 'b' } CheckBox { text: 'c' } } } "
        "function visit() { push(boxes, StackView.Immediate) } "
        "function leave() { pop(StackView.Immediate) } }",
        controls2);
    QVERIFY(scene.show());
    QTRY_VERIFY(!probe.tree(scene.window()).isEmpty());
    for (int visit = 1; visit <= 5; ++visit) {
        QMetaObject::invokeMethod(scene.item("stack"), "visit");
        const QString seen = visit == 1 ? text("{seen}") : text("{seen=%1}").arg(visit);
        const QString first =
            visit == 1 ? text("  Page {seen}\n") : text("  Page {seen=%1}\n").arg(visit);
        QTRY_COMPARE(probe.tree(scene.window()),
                     text("Window {seen}\n") + first + text("  Page ") + seen +
                         text("\n    CheckBox \"a\"\n    CheckBox \"b\"\n    CheckBox \"c\"\n"));
        QMetaObject::invokeMethod(scene.item("stack"), "leave");
        QTRY_VERIFY(scene.item("page") == nullptr);
        QTRY_VERIFY(
            probe.tree(scene.window(), {text("showing")})
                .startsWith(text("Window showing=true {seen}\n  Page showing=true {seen=%1}\n")
                                .arg(visit + 1)));
    }
}

void tst_QuickViews::aWindowWithinAWindowIsAViewOfItsOwn() {
    SurveyProbe probe;
    QuickScene scene("Item { Window { objectName: 'other'; title: 'Other'; flags: Qt.Dialog; "
                     "Button { text: 'OK' } } }",
                     controls2);
    QVERIFY(scene.show());
    QTRY_COMPARE(probe.tree(scene.object("other")), text("Dialog \"Other\"\n  Button \"OK\"\n"));
    QCOMPARE(probe.tree(scene.window()), text("Window {seen}\n"));
}

void tst_QuickViews::whatALoaderShowsIsAPageWhenItCoversTheWindow() {
    SurveyProbe probe;
    QuickScene scene(
        "Item { width: 400; height: 300; "
        "Loader { anchors.fill: parent; sourceComponent: Item { Button { text: 'a' } } } "
        "Loader { width: 30; height: 30; sourceComponent: Item { Button { text: 'b' } } } }",
        controls2);
    QVERIFY(scene.show());
    QTRY_COMPARE(probe.tree(scene.window()),
                 text("Window {seen}\n  Page {seen}\n    Button \"a\"\n  Button \"b\"\n"));
}

void tst_QuickViews::whatIsMadeLaterIsFound() {
    SurveyProbe probe;
    QuickScene scene("Item { width: 100; height: 100; Item { id: parentItem; objectName: 'empty'; "
                     "width: 50; height: 50; "
                     "Component { id: made; Frame { Button { text: 'late' } } } "
                     "function make() { made.createObject(parentItem) } } }",
                     controls2);
    QVERIFY(scene.show());
    QTRY_COMPARE(probe.tree(scene.window()), text("Window {seen}\n"));
    QMetaObject::invokeMethod(scene.item("empty"), "make");
    QTRY_COMPARE(probe.tree(scene.window()), text("Window {seen}\n  Button \"late\"\n"));
}

void tst_QuickViews::aPopupThatIsMadeLaterIsFoundWhenItOpens() {
    SurveyProbe probe;
    QuickScene scene("Item { id: parentItem; objectName: 'root'; width: 100; height: 100; "
                     "Component { id: made; Popup { enter: null; width: 50; height: 50; Button { "
                     "text: 'late' } } } "
                     "function make() { made.createObject(parentItem).open() } }",
                     controls2);
    QVERIFY(scene.show());
    QTRY_COMPARE(probe.tree(scene.window()), text("Window {seen}\n"));
    QMetaObject::invokeMethod(scene.item("root"), "make");
    QTRY_COMPARE(probe.tree(scene.window()),
                 text("Window {seen}\n  Popup {seen}\n    Button \"late\"\n"));
}

void tst_QuickViews::aViewOfTheFirstGenerationIsKnown() {
    SurveyProbe probe;
    QuickScene scene("Item { width: 300; height: 200; "
                     "TabView { anchors.fill: parent; Tab { title: 'A'; Button { text: 'a' } } Tab "
                     "{ title: 'B' } } "
                     "Menu { title: 'M'; MenuItem { text: 'C' } } }",
                     controls1);
    QVERIFY(scene.show());
    QTRY_COMPARE(probe.tree(scene.window()),
                 text("Window {seen}\n  Menu \"M\"\n    Command \"C\"\n  Tab \"A\"\n  Tab \"B\"\n"
                      "  Page \"A\" {seen}\n    Button \"a\"\n"));
}

QTEST_MAIN(tst_QuickViews)
#include "tst_quickviews.moc"
