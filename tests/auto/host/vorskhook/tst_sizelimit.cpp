// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "vorskhook/sizelimit.h"

#include <QTest>

using VorskHost::SizeLimit;

class tst_SizeLimit : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void withoutLimitEverythingIsKept() {
        SizeLimit limit;
        constexpr qint64 huge = qint64{1} << 50;
        QVERIFY(limit.admits(huge, huge, true));
        QVERIFY(limit.admits(huge, huge, false));
        QVERIFY(limit.hasRoom(huge, huge));
    }

    void picturesEndAtHalf() {
        SizeLimit limit;
        limit.setMaximum(100000);
        QVERIFY(limit.admits(40000, 10000, true));
        QVERIFY(!limit.admits(40000, 10001, true));
        QCOMPARE(limit.pictures(), quint64{1});
        QCOMPARE(limit.others(), quint64{0});
        // a smaller one may come later
        QVERIFY(limit.admits(40000, 100, true));
    }

    void othersEndBeforeTheReserve() {
        SizeLimit limit;
        limit.setMaximum(100000);
        const qint64 room = 100000 - SizeLimit::reserve;
        QVERIFY(limit.admits(room - 10, 10, false));
        QVERIFY(!limit.admits(room - 10, 11, false));
        QCOMPARE(limit.others(), quint64{1});
    }

    void afterTheFirstLossNothingIsKept() {
        SizeLimit limit;
        limit.setMaximum(100000);
        QVERIFY(!limit.admits(0, 100000, false));
        QVERIFY(!limit.admits(0, 1, false));
        QVERIFY(!limit.admits(0, 1, true));
        QVERIFY(!limit.hasRoom(0, 1));
        QCOMPARE(limit.others(), quint64{2});
        QCOMPARE(limit.pictures(), quint64{1});
    }

    void aPictureThatIsLostLosesNoOthers() {
        SizeLimit limit;
        limit.setMaximum(100000);
        QVERIFY(!limit.admits(0, 50001, true));
        QVERIFY(limit.admits(0, 50001, false));
    }

    void settingItBeginsAnew() {
        SizeLimit limit;
        limit.setMaximum(100000);
        QVERIFY(!limit.admits(0, 100000, false));
        limit.setMaximum(200000);
        QVERIFY(limit.admits(0, 100000, false));
        QCOMPARE(limit.others(), quint64{0});
    }
};

QTEST_GUILESS_MAIN(tst_SizeLimit)
#include "tst_sizelimit.moc"
