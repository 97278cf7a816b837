// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/percentage.h"
#include "testlib/testcase.h"

#include <QTest>

class TestPercentage : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void sharesAreOnlyAllWhenTheyAreAll_data() {
        QTest::addColumn<int>("part");
        QTest::addColumn<int>("whole");
        QTest::addColumn<int>("digits");
        QTest::addColumn<QString>("text");
        QTest::newRow("none of none") << 0 << 0 << 2 << "-";
        QTest::newRow("none") << 0 << 3 << 0 << "0%";
        QTest::newRow("none, exactly") << 0 << 3 << 2 << "0.00%";
        QTest::newRow("hardly any") << 1 << 1000 << 0 << "1%";
        QTest::newRow("hardly any, exactly") << 1 << 1000 << 1 << "0.1%";
        QTest::newRow("less than can be shown") << 1 << 100000 << 2 << "0.01%";
        QTest::newRow("third") << 1 << 3 << 0 << "33%";
        QTest::newRow("two thirds") << 2 << 3 << 0 << "67%";
        QTest::newRow("third, exactly") << 1 << 3 << 3 << "33.333%";
        QTest::newRow("half way is up") << 1 << 8 << 0 << "13%";
        QTest::newRow("nearly all") << 999 << 1000 << 0 << "99%";
        QTest::newRow("nearly all, exactly") << 99999 << 100000 << 2 << "99.99%";
        QTest::newRow("all") << 1000 << 1000 << 0 << "100%";
        QTest::newRow("all, exactly") << 7 << 7 << 2 << "100.00%";
    }

    void sharesAreOnlyAllWhenTheyAreAll() {
        QFETCH(int, part);
        QFETCH(int, whole);
        QFETCH(int, digits);
        QFETCH(QString, text);
        QCOMPARE(Uicov::Base::percentText(part, whole, digits), text);
        if (whole > 0) {
            QCOMPARE(Uicov::Base::percentNumber(part, whole, digits) + QLatin1Char('%'), text);
        }
    }

    void exactlyMeansNotRounded() {
        QCOMPARE(Uicov::Base::exactPercent(1, 8), 12.5);
        QCOMPARE(Uicov::Base::exactPercent(0, 0), 100.0);
    }
};

QTEST_GUILESS_MAIN(TestPercentage)
#include "tst_percentage.moc"
