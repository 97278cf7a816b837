// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickplaces.h"
#include "testlib/quickscene.h"
#include "testlib/testcase.h"

#include <QTest>

#include <limits>

using namespace Vorsk::UIControls;
using TestLib::QuickScene;

namespace {

constexpr qreal infinite = std::numeric_limits<qreal>::infinity();
constexpr qreal notANumber = std::numeric_limits<qreal>::quiet_NaN();
constexpr int outermost = 1 << 24;

} // namespace

/** Where items are, also those that a program has put where no pixel is. */
class tst_QuickPlaces : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void edgesAreRounded_data();
    void edgesAreRounded();
    void anItemMayBeAnywhere_data();
    void anItemMayBeAnywhere();
};

void tst_QuickPlaces::edgesAreRounded_data() {
    QTest::addColumn<QRectF>("rectangle");
    QTest::addColumn<QRect>("place");
    QTest::newRow("whole") << QRectF(1, 2, 3, 4) << QRect(1, 2, 3, 4);
    QTest::newRow("between pixels") << QRectF(0.5, 1.4, 2, 2) << QRect(1, 1, 2, 2);
    QTest::newRow("not a number") << QRectF(notANumber, 2, 3, 4) << QRect(0, 2, 0, 4);
    QTest::newRow("no size") << QRectF(1, 2, 3, notANumber) << QRect(1, 2, 3, -2);
    QTest::newRow("far away") << QRectF(1e300, -1e300, 3, 4) << QRect(outermost, -outermost, 0, 0);
    QTest::newRow("infinitely far") << QRectF(-infinite, 0, 3, 4) << QRect(-outermost, 0, 0, 4);
    QTest::newRow("huge") << QRectF(-1e300, 0, 2e300, infinite)
                          << QRect(-outermost, 0, 2 * outermost, outermost);
}

void tst_QuickPlaces::edgesAreRounded() {
    QFETCH(QRectF, rectangle);
    QTEST(toPixels(rectangle), "place");
}

void tst_QuickPlaces::anItemMayBeAnywhere_data() {
    QTest::addColumn<QByteArray>("properties");
    QTest::addColumn<QRect>("place");
    QTest::newRow("inside") << QByteArray("x: 5; y: 6; width: 7; height: 8") << QRect(5, 6, 7, 8);
    QTest::newRow("not a number") << QByteArray("x: NaN; width: 7; height: 8") << QRect(0, 0, 7, 8);
    QTest::newRow("infinite") << QByteArray("y: -Infinity; width: 7; height: 8")
                              << QRect(0, -outermost, 7, 0);
    QTest::newRow("beyond int") << QByteArray("x: 1e12; width: 7; height: 1e12")
                                << QRect(outermost, 0, 0, outermost);
}

void tst_QuickPlaces::anItemMayBeAnywhere() {
    QFETCH(QByteArray, properties);
    QuickScene scene("Item { Item { objectName: 'it'; " + properties + " } }");
    QVERIFY(scene.show());
    QTEST(placeOf(scene.item("it")), "place");
}

QTEST_MAIN(tst_QuickPlaces)
#include "tst_quickplaces.moc"
