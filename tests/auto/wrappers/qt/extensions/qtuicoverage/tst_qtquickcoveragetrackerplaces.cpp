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

using Imports = QuickScene::Imports;
using Pictures = QuickProbe::Pictures;

namespace {

QRect rectangle(const UIElement* element) {
    return element->geometry().rect();
}

} // namespace

/** Where elements are, and what a click on a window hits. */
class tst_QtQuickCoverageTrackerPlaces : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
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
    void withPicturesFocusInGivesEveryShownItemOne();
    void withPicturesOnlyValidRectanglesAreCut();
};

void tst_QtQuickCoverageTrackerPlaces::beforeTheFirstFocusInAClickCountsOnNothing() {
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

void tst_QtQuickCoverageTrackerPlaces::clickCountsOnEverythingUnderIt() {
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

void tst_QtQuickCoverageTrackerPlaces::clickCountsOnAChildOutsideItsParent() {
    QuickProbe probe;
    QuickScene scene("Item { width: 10; height: 10;"
                     " Item { objectName: 'outside'; x: 100; y: 100; width: 10; height: 10 } }");
    probe.focusIn(scene.window());
    probe.press(scene.window(), QPointF(105, 105));
    QCOMPARE(probe.usage(scene.item("outside"), "clicked"), 1);
    QCOMPARE(probe.usage(scene.root(), "clicked"), -1);
}

void tst_QtQuickCoverageTrackerPlaces::clickAtTheEdge_data() {
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

void tst_QtQuickCoverageTrackerPlaces::clickAtTheEdge() {
    QFETCH(QPointF, point);
    QFETCH(bool, counts);
    QuickProbe probe;
    QuickScene scene("Item { x: 10; y: 20; width: 30; height: 40 }");
    probe.focusIn(scene.window());
    probe.press(scene.window(), point);
    QCOMPARE(probe.usage(scene.root(), "clicked"), counts ? 1 : -1);
    QCOMPARE(probe.usage(scene.window(), "clicked"), 1);
}

void tst_QtQuickCoverageTrackerPlaces::clickWithAnyButtonCounts_data() {
    QTest::addColumn<int>("button");
    QTest::newRow("left") << int(Qt::LeftButton);
    QTest::newRow("right") << int(Qt::RightButton);
    QTest::newRow("middle") << int(Qt::MiddleButton);
    QTest::newRow("back") << int(Qt::BackButton);
}

void tst_QtQuickCoverageTrackerPlaces::clickWithAnyButtonCounts() {
    QFETCH(int, button);
    QuickProbe probe;
    QuickScene scene("Item { width: 30; height: 40 }");
    probe.focusIn(scene.window());
    probe.press(scene.window(), QPointF(1, 1), static_cast<Qt::MouseButton>(button));
    QCOMPARE(probe.usage(scene.root(), "clicked"), 1);
}

void tst_QtQuickCoverageTrackerPlaces::realClickOnAButtonCountsTwiceOnceItsPlaceIsKnown() {
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

void tst_QtQuickCoverageTrackerPlaces::focusInOnAWindowSetsPlacesInTheOrderOfTheElements() {
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

void tst_QtQuickCoverageTrackerPlaces::focusInOnAWindowLeavesOtherWindowsAlone() {
    QuickProbe probe;
    QuickScene first("Item { width: 10; height: 10 }");
    QuickScene second("Item { width: 20; height: 20 }");
    probe.show(first.window());
    probe.show(second.window());
    probe.focusIn(second.window());
    QCOMPARE(rectangle(probe.element(first.root())), QRect());
    QCOMPARE(rectangle(probe.element(second.root())), QRect(0, 0, 20, 20));
}

void tst_QtQuickCoverageTrackerPlaces::hiddenItemsKeepTheirPlaceUntilAnAncestorGetsFocus_data() {
    QTest::addColumn<bool>("visible");
    QTest::addColumn<qreal>("opacity");
    QTest::newRow("hidden") << false << 1.0;
    QTest::newRow("opacity 0") << true << 0.0;
}

void tst_QtQuickCoverageTrackerPlaces::hiddenItemsKeepTheirPlaceUntilAnAncestorGetsFocus() {
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

void tst_QtQuickCoverageTrackerPlaces::focusInOnAnItemWithoutAWindowDoesNothing() {
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

void tst_QtQuickCoverageTrackerPlaces::focusInOnAnItemSkipsUnknownItemsAndGoesOn() {
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

void tst_QtQuickCoverageTrackerPlaces::withPicturesFocusInGivesEveryShownItemOne() {
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

void tst_QtQuickCoverageTrackerPlaces::withPicturesOnlyValidRectanglesAreCut() {
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

QTEST_MAIN(tst_QtQuickCoverageTrackerPlaces)

#include "tst_qtquickcoveragetrackerplaces.moc"
