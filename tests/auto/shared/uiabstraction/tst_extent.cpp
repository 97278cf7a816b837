// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "uiabstraction/extent.h"

#include <QRandomGenerator>
#include <QRect>
#include <QTest>

#include <limits>

using Vorsk::UIAbstraction::Extent;

class tst_Extent : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void holdsNothingAtFirst();
    void holdsWhatItsRectangleHolds();
    void holdsTheWidestRectangle();
    void holdsWhatItWasUnitedWith();
    void emptyAddsNothing();
};

void tst_Extent::holdsNothingAtFirst() {
    const Extent empty;
    QVERIFY(!empty.contains(QPoint(0, 0)));
    QVERIFY(empty.contains(Extent()));
    QVERIFY(!empty.contains(Extent(QRect(0, 0, 1, 1))));
    QVERIFY(Extent(QRect(0, 0, 1, 1)).contains(empty));
}

void tst_Extent::holdsWhatItsRectangleHolds() {
    // Also rectangles without points, and those that are turned inside out.
    for (int left = -2; left <= 2; ++left) {
        for (int right = -4; right <= 2; ++right) {
            for (int bottom = -4; bottom <= 2; ++bottom) {
                const QRect rectangle(QPoint(left, -1), QPoint(right, bottom));
                const Extent extent(rectangle);
                const bool isTurned = rectangle.width() < 0 || rectangle.height() < 0;
                for (int x = -6; x <= 6; ++x) {
                    for (int y = -6; y <= 6; ++y) {
                        const bool isInside = rectangle.contains(QPoint(x, y));
                        QVERIFY(extent.contains(QPoint(x, y)) || !isInside);
                        QVERIFY(!extent.contains(QPoint(x, y)) || isInside || isTurned);
                    }
                }
            }
        }
    }
}

void tst_Extent::holdsTheWidestRectangle() {
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    const Extent all(QRect(QPoint(least, least), QPoint(most, most)));
    QVERIFY(all.contains(QPoint(least, most)));
    QVERIFY(all.contains(Extent(QRect(3, 4, 5, 6))));
    const Extent turned(QRect(QPoint(most, 0), QPoint(least, 0)));
    QVERIFY(turned.contains(QPoint(0, 0)));
    QVERIFY(!turned.contains(QPoint(0, 1)));
}

void tst_Extent::holdsWhatItWasUnitedWith() {
    Extent extent(QRect(0, 0, 10, 10));
    const Extent other(QRect(20, -5, 10, 10));
    QVERIFY(!extent.contains(other));
    extent.unite(other);
    QVERIFY(extent.contains(other));
    QVERIFY(extent.contains(Extent(QRect(0, 0, 10, 10))));
    QVERIFY(extent.contains(QPoint(29, -5)));
    QVERIFY(!extent.contains(QPoint(30, -5)));
    QVERIFY(!extent.contains(QPoint(29, 10)));
}

void tst_Extent::emptyAddsNothing() {
    Extent extent(QRect(0, 0, 10, 10));
    extent.unite(Extent(QRect()));
    extent.unite(Extent(QRect(50, 50, 0, 5)));
    QVERIFY(!extent.contains(QPoint(10, 0)));
    QVERIFY(!extent.contains(QPoint(50, 50)));
}

QTEST_APPLESS_MAIN(tst_Extent)

#include "tst_extent.moc"
