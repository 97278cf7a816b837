#include "qtquickcoveragetracker.h"
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

QRect rectangle(const UIElement* element) {
    return element->geometry().rect();
}

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

/** What events do: windows become known, clicks hit, geometry is refreshed. */
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
    void beforeTheFirstFocusInAClickCountsOnNothing();
    void clickCountsOnEverythingUnderIt();
    void clickCountsOnAChildOutsideItsParent();
    void clickAtTheEdge_data();
    void clickAtTheEdge();
    void clickWithAnyButtonCounts_data();
    void clickWithAnyButtonCounts();
    void realClickOnAButtonCountsTwiceOnceItsPlaceIsKnown();
    void focusInOnAWindowSetsPlacesInTheOrderOfTheElements();
    void focusInOnAWindowLeavesOtherWindowsAlone();
    void hiddenItemsKeepTheirPlaceUntilAnAncestorGetsFocus_data();
    void hiddenItemsKeepTheirPlaceUntilAnAncestorGetsFocus();
    void focusInOnAnItemWithoutAWindowDoesNothing();
    void focusInOnAnItemSkipsUnknownItemsAndGoesOn();
    void withoutPicturesNothingIsRendered();
    void withPicturesFocusInGivesEveryShownItemOne();
    void withPicturesOnlyValidRectanglesAreCut();
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
    QTest::newRow("with pictures it becomes known") << Pictures::On;
    QTest::newRow("without them it stays unknown") << Pictures::Off;
}

void tst_QtQuickCoverageTracker::keyPressOnAnUnknownWindow() {
    QFETCH(Pictures, pictures);
    QuickProbe probe(pictures);
    QuickScene scene("Rectangle { }");
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

void tst_QtQuickCoverageTracker::beforeTheFirstFocusInAClickCountsOnNothing() {
    QuickProbe probe;
    QuickScene scene("Rectangle { anchors.fill: parent }");
    probe.show(scene.window());
    QCOMPARE(probe.element(scene.root())->geometry(),
             Vorsk::UIAbstraction::ElementGeometry(QRect(), false));
    QCOMPARE(probe.element(scene.window())->geometry(),
             Vorsk::UIAbstraction::ElementGeometry(QRect(), false));
    probe.takeRecords();
    probe.press(scene.window(), QPointF(0, 0));
    probe.press(scene.window(), QPointF(10, 10));
    QCOMPARE(probe.takeRecords(), QStringList());
}

void tst_QtQuickCoverageTracker::clickCountsOnEverythingUnderIt() {
    QuickProbe probe;
    QuickScene scene("Item { width: 400; height: 300;"
                     " Item { objectName: 'left'; width: 60; height: 20 }"
                     " Item { objectName: 'right'; x: 40; width: 60; height: 20 }"
                     " Item { objectName: 'far'; x: 200; width: 60; height: 20 } }");
    probe.focusIn(scene.window());
    probe.press(scene.window(), QPointF(50, 10));
    QCOMPARE(probe.usage(scene.item("left"), "clicked"), 1);
    QCOMPARE(probe.usage(scene.item("right"), "clicked"), 1);
    QCOMPARE(probe.usage(scene.root(), "clicked"), 1);
    QCOMPARE(probe.usage(scene.window(), "clicked"), 1);
    QCOMPARE(probe.usage(scene.item("far"), "clicked"), -1);
}

void tst_QtQuickCoverageTracker::clickCountsOnAChildOutsideItsParent() {
    QuickProbe probe;
    QuickScene scene("Item { width: 10; height: 10;"
                     " Item { objectName: 'outside'; x: 100; y: 100; width: 10; height: 10 } }");
    probe.focusIn(scene.window());
    probe.press(scene.window(), QPointF(105, 105));
    QCOMPARE(probe.usage(scene.item("outside"), "clicked"), 1);
    QCOMPARE(probe.usage(scene.root(), "clicked"), -1);
}

void tst_QtQuickCoverageTracker::clickAtTheEdge_data() {
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<bool>("counts");
    QTest::newRow("first pixel") << QPointF(10, 20) << true;
    QTest::newRow("last pixel") << QPointF(39, 59) << true;
    QTest::newRow("one further right") << QPointF(40, 59) << false;
    QTest::newRow("one further down") << QPointF(39, 60) << false;
    QTest::newRow("one too far left") << QPointF(9, 20) << false;
    QTest::newRow("one too far up") << QPointF(10, 19) << false;
    QTest::newRow("rounded to the last pixel") << QPointF(39.49, 59.49) << true;
    QTest::newRow("a half is rounded away") << QPointF(39.5, 59) << false;
    QTest::newRow("a half is rounded in") << QPointF(9.5, 19.5) << true;
    QTest::newRow("rounded to the pixel before") << QPointF(9.49, 20) << false;
}

void tst_QtQuickCoverageTracker::clickAtTheEdge() {
    QFETCH(QPointF, point);
    QFETCH(bool, counts);
    QuickProbe probe;
    QuickScene scene("Item { x: 10; y: 20; width: 30; height: 40 }");
    probe.focusIn(scene.window());
    probe.press(scene.window(), point);
    QCOMPARE(probe.usage(scene.root(), "clicked"), counts ? 1 : -1);
    QCOMPARE(probe.usage(scene.window(), "clicked"), 1);
}

void tst_QtQuickCoverageTracker::clickWithAnyButtonCounts_data() {
    QTest::addColumn<int>("button");
    QTest::newRow("left") << int(Qt::LeftButton);
    QTest::newRow("right") << int(Qt::RightButton);
    QTest::newRow("middle") << int(Qt::MiddleButton);
    QTest::newRow("back") << int(Qt::BackButton);
}

void tst_QtQuickCoverageTracker::clickWithAnyButtonCounts() {
    QFETCH(int, button);
    QuickProbe probe;
    QuickScene scene("Item { width: 30; height: 40 }");
    probe.focusIn(scene.window());
    probe.press(scene.window(), QPointF(1, 1), static_cast<Qt::MouseButton>(button));
    QCOMPARE(probe.usage(scene.root(), "clicked"), 1);
}

void tst_QtQuickCoverageTracker::realClickOnAButtonCountsTwiceOnceItsPlaceIsKnown() {
    QuickProbe probe;
    QuickScene scene("Item { Button { objectName: 'button' } }", Imports::Controls2);
    QVERIFY(scene.show());
    probe.start(); // the window has had its focus before
    scene.click(scene.item("button"));
    QCOMPARE(probe.usage(scene.item("button"), "clicked"), 1); // its signal
    probe.focusIn(scene.window());
    scene.click(scene.item("button"));
    QCOMPARE(probe.usage(scene.item("button"), "clicked"), 3); // hit and signal
}

void tst_QtQuickCoverageTracker::focusInOnAWindowSetsPlacesInTheOrderOfTheElements() {
    QuickProbe probe;
    QuickScene scene("Item { x: 1; width: 10; height: 10;"
                     " Item { x: 2; width: 20; height: 10; Item { x: 3; width: 5; height: 5 } }"
                     " Item { x: 4; width: 8; height: 8 } }");
    probe.show(scene.window());
    probe.takeRecords();
    probe.focusIn(scene.window());
    QCOMPARE(probe.takeRecords().join(QLatin1Char('\n')),
             QStringLiteral("kind 4 geometryChanged #1 (0,0 400x300)\n"
                            "kind 4 geometryChanged #2 (0,0 0x0)\n"
                            "kind 4 geometryChanged #3 (1,0 10x10)\n"
                            "kind 4 geometryChanged #4 (3,0 20x10)\n"
                            "kind 4 geometryChanged #5 (6,0 5x5)\n"
                            "kind 4 geometryChanged #6 (5,0 8x8)"));
    QVERIFY(probe.element(scene.root())->geometry().isValid());
}

void tst_QtQuickCoverageTracker::focusInOnAWindowLeavesOtherWindowsAlone() {
    QuickProbe probe;
    QuickScene first("Item { width: 10; height: 10 }");
    QuickScene second("Item { width: 20; height: 20 }");
    probe.show(first.window());
    probe.show(second.window());
    probe.focusIn(second.window());
    QCOMPARE(rectangle(probe.element(first.root())), QRect());
    QCOMPARE(rectangle(probe.element(second.root())), QRect(0, 0, 20, 20));
}

void tst_QtQuickCoverageTracker::hiddenItemsKeepTheirPlaceUntilAnAncestorGetsFocus_data() {
    QTest::addColumn<bool>("visible");
    QTest::addColumn<qreal>("opacity");
    QTest::newRow("hidden") << false << 1.0;
    QTest::newRow("opacity 0") << true << 0.0;
}

void tst_QtQuickCoverageTracker::hiddenItemsKeepTheirPlaceUntilAnAncestorGetsFocus() {
    QFETCH(bool, visible);
    QFETCH(qreal, opacity);
    QuickProbe probe;
    QuickScene scene("Item { width: 100; height: 100;"
                     " Item { objectName: 'it'; x: 5; width: 10; height: 10 } }");
    probe.focusIn(scene.window());
    QQuickItem* const item = scene.item("it");
    item->setVisible(visible);
    item->setOpacity(opacity);
    item->setX(50);
    probe.focusIn(scene.window());
    QCOMPARE(rectangle(probe.element(item)), QRect(5, 0, 10, 10));
    probe.focusIn(scene.root());
    QCOMPARE(rectangle(probe.element(item)), QRect(50, 0, 10, 10));
}

void tst_QtQuickCoverageTracker::focusInOnAnItemWithoutAWindowDoesNothing() {
    QuickProbe probe;
    QuickScene scene("Item { width: 10; height: 10 }");
    probe.focusIn(scene.window());
    scene.root()->setParentItem(nullptr);
    scene.root()->setWidth(20);
    probe.takeRecords();
    probe.focusIn(scene.root());
    probe.press(scene.root());
    QCOMPARE(probe.takeRecords(), QStringList());
}

void tst_QtQuickCoverageTracker::focusInOnAnItemSkipsUnknownItemsAndGoesOn() {
    QuickProbe probe;
    QuickScene scene("Item { }");
    probe.show(scene.window());
    QQuickItem unknown;
    QQuickItem known;
    known.setSize(QSizeF(7, 7));
    known.setParentItem(scene.root());
    QVERIFY(probe.element(&known));
    scene.root()->blockSignals(true); // so that nobody hears of it
    unknown.setParentItem(scene.root());
    known.setParentItem(&unknown);
    scene.root()->blockSignals(false);
    QCOMPARE(probe.element(&unknown), nullptr);
    probe.focusIn(scene.root());
    QCOMPARE(rectangle(probe.element(&known)), QRect(0, 0, 7, 7));
    QCOMPARE(probe.element(&unknown), nullptr);
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

void tst_QtQuickCoverageTracker::withPicturesFocusInGivesEveryShownItemOne() {
    QuickProbe probe(Pictures::On);
    QuickScene scene("Item { width: 10; height: 10;"
                     " Item { width: 5; height: 5 } Item { visible: false } }");
    probe.show(scene.window());
    probe.takeRecords();
    probe.focusIn(scene.window());
    // Null, because the window has no picture yet. The content item of the hidden window has no
    // size, so nothing is cut for it.
    QCOMPARE(probe.takeRecords().join(QLatin1Char('\n')),
             QStringLiteral("kind 4 geometryChanged #1 (0,0 400x300)\n"
                            "kind 4 geometryChanged #2 (0,0 0x0)\n"
                            "kind 4 geometryChanged #3 (0,0 10x10)\n"
                            "kind 5 imageChanged #3 no image\n"
                            "kind 4 geometryChanged #4 (0,0 5x5)\n"
                            "kind 5 imageChanged #4 no image"));
}

void tst_QtQuickCoverageTracker::withPicturesOnlyValidRectanglesAreCut() {
    QuickProbe probe(Pictures::On);
    QuickScene scene("Item { Item { width: 1; height: 1 } Item { width: 0; height: 9 }"
                     " Item { width: 9; height: -1 } }");
    probe.show(scene.window());
    QImage picture(400, 300, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    picture.setPixelColor(0, 0, Qt::red);
    probe.element(scene.window())->setImage(picture);
    probe.takeRecords();
    probe.focusIn(scene.window());
    QCOMPARE(probe.takeRecords(5).join(QLatin1Char('\n')),
             QStringLiteral("kind 5 imageChanged #4 image 1x1"));
    QCOMPARE(probe.element(scene.root()->childItems().constFirst())->image().pixelColor(0, 0),
             QColor(Qt::red));
}

QTEST_MAIN(tst_QtQuickCoverageTracker)

#include "tst_qtquickcoveragetracker.moc"
