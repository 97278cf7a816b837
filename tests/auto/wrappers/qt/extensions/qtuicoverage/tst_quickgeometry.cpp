// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/quickgeometry.h"
#include "testlib/testcase.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <limits>

using Vorsk::UICoverage::isShownItem;
using Vorsk::UICoverage::sceneRectangle;

namespace {

constexpr qreal infinite = std::numeric_limits<qreal>::infinity();
constexpr qreal notANumber = std::numeric_limits<qreal>::quiet_NaN();
constexpr int outermost = std::numeric_limits<int>::max();

QRect fromCorners(int left, int top, int right, int bottom) {
    return {QPoint(left, top), QPoint(right, bottom)};
}

} // namespace

class tst_QuickGeometry : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void shownItem_data() {
        QTest::addColumn<bool>("visible");
        QTest::addColumn<qreal>("opacity");
        QTest::addColumn<bool>("shown");
        QTest::newRow("visible") << true << 1.0 << true;
        QTest::newRow("hidden") << false << 1.0 << false;
        QTest::newRow("faint") << true << 0.01 << true;
        QTest::newRow("hardly there") << true << 2e-12 << true;
        QTest::newRow("as good as nothing") << true << 1e-12 << false;
        QTest::newRow("fully transparent") << true << 0.0 << false;
        QTest::newRow("hidden and transparent") << false << 0.0 << false;
    }

    void shownItem() {
        QFETCH(bool, visible);
        QFETCH(qreal, opacity);
        QFETCH(bool, shown);
        QQuickItem item;
        item.setVisible(visible);
        item.setOpacity(opacity);
        QCOMPARE(isShownItem(&item), shown);
    }

    void anItemOfAHiddenParentIsNotShown() {
        QQuickItem parent;
        QQuickItem item(&parent);
        parent.setVisible(false);
        QVERIFY(!isShownItem(&item));
    }

    void anItemOfATransparentParentIsShown() {
        QQuickItem parent;
        QQuickItem item(&parent);
        parent.setOpacity(0);
        QVERIFY(isShownItem(&item));
    }

    void withoutAWindowThereIsNoRectangle() {
        QQuickItem item;
        item.setSize(QSizeF(10, 10));
        QCOMPARE(sceneRectangle(&item), QRect());
    }

    void rectangle_data() {
        QTest::addColumn<QRectF>("place");
        QTest::addColumn<QRect>("rectangle");
        QTest::newRow("whole pixels") << QRectF(10, 20, 30, 40) << QRect(10, 20, 30, 40);
        QTest::newRow("parts of pixels are rounded up")
            << QRectF(10.1, 20.9, 30.1, 40.9) << QRect(11, 21, 31, 41);
        QTest::newRow("above and left of the window")
            << QRectF(-10.9, -20.1, 5, 5) << QRect(-10, -20, 5, 5);
        QTest::newRow("no size") << QRectF(3, 4, 0, 0) << QRect(3, 4, 0, 0);
        QTest::newRow("negative size") << QRectF(3, 4, -5.5, -6) << QRect(3, 4, -5, -6);
    }

    void rectangle() {
        QFETCH(QRectF, place);
        QFETCH(QRect, rectangle);
        QQuickWindow window;
        QQuickItem outer(window.contentItem());
        QQuickItem item(&outer);
        outer.setPosition(QPointF(100, 200));
        item.setPosition(place.topLeft());
        item.setSize(place.size());
        QCOMPARE(sceneRectangle(&item), rectangle.translated(100, 200));
    }

    void sizeIsTheItemsOwnAlsoWhenItIsScaled() {
        QQuickWindow window;
        QQuickItem item(window.contentItem());
        item.setPosition(QPointF(10, 20));
        item.setSize(QSizeF(30, 40));
        item.setTransformOrigin(QQuickItem::TopLeft);
        item.setScale(2);
        QCOMPARE(sceneRectangle(&item), QRect(10, 20, 30, 40));
    }

    void placeIsThatOfTheWindowsRectangleInItsTurnedCoordinates() {
        // A quarter turn around the item's own corner: the window's rectangle, 60 wide and 50 high,
        // lies to the left of that corner.
        QQuickWindow window;
        window.contentItem()->setSize(QSizeF(60, 50));
        QQuickItem item(window.contentItem());
        item.setPosition(QPointF(100, 20));
        item.setSize(QSizeF(30, 40));
        item.setTransformOrigin(QQuickItem::TopLeft);
        item.setRotation(90);
        QCOMPARE(sceneRectangle(&item), QRect(50, 20, 30, 40));
    }

    void unusualNumbers_data() {
        QTest::addColumn<QPointF>("position");
        QTest::addColumn<QSizeF>("size");
        QTest::addColumn<QRect>("rectangle");
        QTest::newRow("the largest that an int holds")
            << QPointF(0, 0) << QSizeF(outermost, outermost)
            << fromCorners(0, 0, outermost - 1, outermost - 1);
        QTest::newRow("wider and higher than an int can say")
            << QPointF(0, 0) << QSizeF(1e18, 3e9)
            << fromCorners(0, 0, outermost - 1, outermost - 1);
        QTest::newRow("the end is beyond the last pixel")
            << QPointF(10, 20) << QSizeF(outermost, outermost)
            << fromCorners(10, 20, outermost, outermost);
        QTest::newRow("infinite size") << QPointF(1, 2) << QSizeF(infinite, infinite)
                                       << fromCorners(1, 2, outermost, outermost);
        QTest::newRow("infinitely small size")
            << QPointF(1, 2) << QSizeF(-infinite, -infinite)
            << fromCorners(1, 2, 1 - outermost - 1, 2 - outermost - 1);
        QTest::newRow("far right and below")
            << QPointF(1e12, 3e9) << QSizeF(5, 5)
            << fromCorners(outermost, outermost, outermost, outermost);
        QTest::newRow("far left and above")
            << QPointF(-1e12, -3e9) << QSizeF(5, 5)
            << fromCorners(-outermost, -outermost, 4 - outermost, 4 - outermost);
        QTest::newRow("large, and no more than that")
            << QPointF(-1.5e9, 1.5e9) << QSizeF(1e9, 1)
            << QRect(-1500000000, 1500000000, 1000000000, 1);
    }

    void unusualNumbers() {
        QFETCH(QPointF, position);
        QFETCH(QSizeF, size);
        QFETCH(QRect, rectangle);
        QQuickWindow window;
        QQuickItem item(window.contentItem());
        item.setPosition(position);
        item.setSize(size);
        QCOMPARE(sceneRectangle(&item), rectangle);
    }

    void whatIsNotANumberIsZero() {
        QQuickWindow window;
        QQuickItem item(window.contentItem());
        item.setPosition(QPointF(notANumber, notANumber)); // refused by the item, or 0 in the end
        item.setSize(QSizeF(10, 20));
        item.setTransformOrigin(QQuickItem::TopLeft);
        item.setScale(notANumber);
        QCOMPARE(sceneRectangle(&item), QRect(0, 0, 10, 20));
    }
};

QTEST_MAIN(tst_QuickGeometry)

#include "tst_quickgeometry.moc"
