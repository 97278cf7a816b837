// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtquickcoveragetracker.h"
#include "testlib/quickprobe.h"
#include "testlib/quickscene.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QFocusEvent>
#include <QQuickView>
#include <QTest>

using TestLib::QuickProbe;
using TestLib::QuickScene;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UICoverage::QtQuickCoverageTracker;
using Vorsk::UICoverage::UICoverageTracker;

using Imports = QuickScene::Imports;
using Pictures = QuickProbe::Pictures;

namespace {

/** Counts how often it is asked to polish itself, which every rendering of its window begins with.
 */
class PolishCounter : public QQuickItem {
public:
    using QQuickItem::QQuickItem;
    int polished = 0;

protected:
    void updatePolish() override { ++polished; }
};

} // namespace

/** What events do: windows become known, are shown and rendered. */
class tst_QtQuickCoverageTracker : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void castsToItsInterface();
    void worksWithoutAnExporter();
    void eventFilterHandlesAndDoesNotConsume();
    void eventsOfNoInterest_data();
    void eventsOfNoInterest();
    void eventsThatMakeAWindowKnown_data();
    void eventsThatMakeAWindowKnown();
    void keyPressOnAnUnknownWindow_data();
    void keyPressOnAnUnknownWindow();
    void itemEventsMakeNothingKnown();
    void noWindowHasNoElement();
    void firstShowSendsTheseRecords();
    void laterShowCountsAndTakesTheTitle();
    void titleIsTakenAsItIs();
    void viewHasItsRootObjectAsChild();
    void viewWithoutARootObjectHasNoChild();
    void withoutPicturesNothingIsRendered();
};

void tst_QtQuickCoverageTracker::castsToItsInterface() {
    QtQuickCoverageTracker tracker(nullptr);
    QObject* const object = &tracker;
    QCOMPARE(object->qt_metacast("UICoverageTracker"),
             static_cast<void*>(static_cast<UICoverageTracker*>(&tracker)));
    QCOMPARE(qobject_cast<UICoverageTracker*>(object), &tracker);
    QCOMPARE(object->qt_metacast("Vorsk::UICoverage::QtQuickCoverageTracker"),
             static_cast<void*>(&tracker));
    QCOMPARE(object->qt_metacast("AnythingElse"), nullptr);
    QCOMPARE(object->parent(), nullptr);
    const QMetaObject* const meta = object->metaObject();
    QCOMPARE(meta->methodCount(), meta->methodOffset());
    QCOMPARE(meta->propertyCount(), meta->propertyOffset());
}

void tst_QtQuickCoverageTracker::worksWithoutAnExporter() {
    QtQuickCoverageTracker tracker(nullptr);
    QuickScene scene("Rectangle { }");
    QShowEvent event;
    tracker.handleEvent(scene.window(), &event);
    QVERIFY(tracker.element(scene.root()));
    QCOMPARE(tracker.rootElements(), QList<UIElement*>{tracker.element(scene.window())});
    tracker.elementStore().clear();
}

void tst_QtQuickCoverageTracker::eventFilterHandlesAndDoesNotConsume() {
    QuickProbe probe;
    QQuickWindow window;
    QShowEvent event;
    QVERIFY(!probe.tracker().eventFilter(&window, &event));
    QCOMPARE(probe.usage(&window, "shown"), 1);
}

void tst_QtQuickCoverageTracker::eventsOfNoInterest_data() {
    QTest::addColumn<int>("type");
    QTest::newRow("release") << int(QEvent::MouseButtonRelease);
    QTest::newRow("double click") << int(QEvent::MouseButtonDblClick);
    QTest::newRow("move") << int(QEvent::MouseMove);
    QTest::newRow("key release") << int(QEvent::KeyRelease);
    QTest::newRow("focus out") << int(QEvent::FocusOut);
    QTest::newRow("hide") << int(QEvent::Hide);
    QTest::newRow("expose") << int(QEvent::Expose);
    QTest::newRow("user") << int(QEvent::User);
    QTest::newRow("none") << int(QEvent::None);
}

void tst_QtQuickCoverageTracker::eventsOfNoInterest() {
    QFETCH(int, type);
    QuickProbe probe(Pictures::On);
    QuickScene scene("Rectangle { }");
    QEvent event(static_cast<QEvent::Type>(type));
    probe.tracker().handleEvent(scene.window(), &event);
    probe.tracker().handleEvent(scene.root(), &event);
    QCOMPARE(probe.takeRecords(), QStringList());
    QShowEvent show;
    QObject other;
    probe.tracker().handleEvent(&other, &show);
    QWindow plainWindow;
    probe.tracker().handleEvent(&plainWindow, &show);
    QCOMPARE(probe.takeRecords(), QStringList());
}

void tst_QtQuickCoverageTracker::eventsThatMakeAWindowKnown_data() {
    QTest::addColumn<int>("type");
    QTest::newRow("press") << int(QEvent::MouseButtonPress);
    QTest::newRow("focus in") << int(QEvent::FocusIn);
    QTest::newRow("show") << int(QEvent::Show);
}

void tst_QtQuickCoverageTracker::eventsThatMakeAWindowKnown() {
    QFETCH(int, type);
    QuickProbe probe;
    QuickScene scene("Rectangle { Text { objectName: 'deep' } }");
    switch (type) {
    case QEvent::MouseButtonPress:
        probe.press(scene.window());
        break;
    case QEvent::FocusIn:
        probe.focusIn(scene.window());
        break;
    default:
        probe.show(scene.window());
        break;
    }
    QVERIFY(probe.element(scene.window()));
    QVERIFY(probe.element(scene.item("deep")));
    QCOMPARE(probe.usage(scene.window(), "shown"), type == QEvent::Show ? 1 : 0);
}

void tst_QtQuickCoverageTracker::keyPressOnAnUnknownWindow_data() {
    QTest::addColumn<Pictures>("pictures");
    QTest::addColumn<bool>("isCreated");
    QTest::newRow("with pictures it becomes known") << Pictures::On << false;
    // Qt for 32 bit crashes when it is asked for a picture of such a window.
    QTest::newRow("also when it was made for the display and not shown") << Pictures::On << true;
    QTest::newRow("without them it stays unknown") << Pictures::Off << false;
}

void tst_QtQuickCoverageTracker::keyPressOnAnUnknownWindow() {
    QFETCH(Pictures, pictures);
    QFETCH(bool, isCreated);
    QuickProbe probe(pictures);
    QuickScene scene("Rectangle { }");
    if (isCreated) {
        scene.window()->create();
    }
    probe.pressKey(scene.window());
    QCOMPARE(probe.element(scene.window()) != nullptr, pictures == Pictures::On);
    QCOMPARE(probe.element(scene.root()) != nullptr, pictures == Pictures::On);
    QCOMPARE(probe.takeRecords(5).size(), pictures == Pictures::On ? 1 : 0);
}

void tst_QtQuickCoverageTracker::itemEventsMakeNothingKnown() {
    QuickProbe probe(Pictures::On);
    QuickScene scene("Rectangle { }");
    probe.press(scene.root());
    probe.pressKey(scene.root());
    probe.focusIn(scene.root());
    QShowEvent show;
    probe.tracker().handleEvent(scene.root(), &show);
    QCOMPARE(probe.takeRecords(), QStringList());
    QVERIFY(probe.tracker().elementStore().elements().isEmpty());
}

void tst_QtQuickCoverageTracker::noWindowHasNoElement() {
    QuickProbe probe;
    QCOMPARE(probe.tracker().windowElement(nullptr), nullptr);
    probe.tracker().trackChildren(nullptr);
    QObject object;
    probe.tracker().trackChildren(&object);
    QCOMPARE(probe.takeRecords(), QStringList());
}

void tst_QtQuickCoverageTracker::firstShowSendsTheseRecords() {
    QuickProbe probe;
    QQuickWindow window;
    window.setTitle(QStringLiteral("Title"));
    QQuickItem child(window.contentItem());
    probe.show(&window);
    QCOMPARE(probe.takeRecords().join(QLatin1Char('\n')),
             QStringLiteral("kind 1 elementAdded #1 Window/QQuickWindow\n"
                            "kind 10 windowNodeChanged #1 true\n"
                            "kind 3 eventRegistered #1 shown\n"
                            "kind 7 textChanged #1 \"Title\"\n"
                            "kind 1 elementAdded #2 unknown/QQuickRootItem transparent\n"
                            "kind 1 elementAdded #3 unknown/QQuickItem transparent\n"
                            "kind 2 childAdded #2 #3\n"
                            "kind 2 childAdded #1 #2\n"
                            "kind 8 transparentNodeChanged #2 true\n"
                            "kind 7 textChanged #1 \"Title\"\n"
                            "kind 11 usageIncreased #1 shown=1"));
}

void tst_QtQuickCoverageTracker::laterShowCountsAndTakesTheTitle() {
    QuickProbe probe;
    QQuickWindow window;
    window.setTitle(QStringLiteral("Before"));
    probe.show(&window);
    QCOMPARE(probe.element(&window)->text(), QStringLiteral("Before"));
    window.setTitle(QStringLiteral("After"));
    QCOMPARE(probe.element(&window)->text(), QStringLiteral("Before"));
    probe.takeRecords();
    probe.show(&window);
    probe.show(&window);
    QCOMPARE(probe.takeRecords().join(QLatin1Char('\n')),
             QStringLiteral("kind 7 textChanged #1 \"After\"\n"
                            "kind 11 usageIncreased #1 shown=2\n"
                            "kind 7 textChanged #1 \"After\"\n"
                            "kind 11 usageIncreased #1 shown=3"));
}

void tst_QtQuickCoverageTracker::titleIsTakenAsItIs() {
    QuickProbe probe;
    QQuickWindow window;
    window.setTitle(QStringLiteral("&Salt && pepper"));
    probe.show(&window);
    QCOMPARE(probe.element(&window)->text(), QStringLiteral("&Salt && pepper"));
}

void tst_QtQuickCoverageTracker::viewHasItsRootObjectAsChild() {
    QuickProbe probe;
    QuickScene scene("Rectangle { Text { text: 'inside' } }");
    QQuickView view;
    view.setContent(QUrl(), nullptr, scene.root());
    QCOMPARE(view.rootObject(), scene.root());
    QQuickItem beside(view.contentItem());
    probe.show(&view);
    QCOMPARE(probe.tree(&view), QStringLiteral("Window/QQuickView window {shown=1}\n"
                                               "  unknown/%1 transparent\n"
                                               "    unknown/QQuickText \"inside\" transparent\n")
                                    .arg(probe.element(scene.root())->concreteType()));
    QCOMPARE(probe.element(view.contentItem()), nullptr);
    QCOMPARE(probe.element(&beside), nullptr);
    scene.root()->setParentItem(nullptr);
}

void tst_QtQuickCoverageTracker::viewWithoutARootObjectHasNoChild() {
    QuickProbe probe;
    QQuickView view;
    probe.show(&view);
    QVERIFY(probe.element(&view)->children().isEmpty());
    QVERIFY(probe.element(&view)->isWindowNode());
}

void tst_QtQuickCoverageTracker::withoutPicturesNothingIsRendered() {
    QuickProbe probe;
    QuickScene scene("Item { width: 100; height: 100 }");
    PolishCounter item(scene.root());
    QVERIFY(scene.show());
    probe.show(scene.window());
    QTRY_VERIFY(scene.window()->isExposed());
    item.polished = 0;
    item.polish();
    probe.press(scene.window(), QPointF(1, 1));
    probe.pressKey(scene.window());
    probe.press(&item);
    probe.pressKey(&item);
    probe.takeRecords();
    probe.focusIn(scene.window());
    probe.focusIn(scene.root());
    QCOMPARE(probe.takeRecords(4).size(), 6);
    QCOMPARE(item.polished, 0);
    // The same with pictures, so that it is known that rendering shows.
    probe.tracker().setTakeScreenshotsOfElements(true);
    probe.press(scene.window());
    QCOMPARE(item.polished, 1);
}

QTEST_MAIN(tst_QtQuickCoverageTracker)

#include "tst_qtquickcoveragetracker.moc"
