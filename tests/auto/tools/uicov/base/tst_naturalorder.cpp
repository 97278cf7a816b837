// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/naturalorder.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Base::compareNaturally;

class TestNaturalOrder : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void textsStandInNaturalOrder_data() {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        const auto row = [](const char* first, const char* second) {
            QTest::addRow("%s, %s", first, second)
                << QString::fromUtf8(first) << QString::fromUtf8(second);
        };
        row("", "a");
        row("a", "b");
        row("A", "b");
        row("a", "B");
        row("Page 9", "Page 10");
        row("page 9", "Page 10");
        row("a2b9", "a2b10");
        row("a", "ab");
        row("1", "a");
        row("9", "99999999999999999999999999");
        row("007", "8");
        row("0", "1");
        row("x1y", "x01z");
        row("Zoom", "Ärger");
    }

    void textsStandInNaturalOrder() {
        QFETCH(QString, first);
        QFETCH(QString, second);
        QVERIFY(compareNaturally(first, second) < 0);
        QVERIFY(compareNaturally(second, first) > 0);
        QCOMPARE(compareNaturally(first, first), 0);
    }

    void onlyEqualTextsAreEqual() {
        QVERIFY(compareNaturally(QStringLiteral("a"), QStringLiteral("A")) != 0);
        QVERIFY(compareNaturally(QStringLiteral("a1"), QStringLiteral("a01")) != 0);
    }
};

QTEST_GUILESS_MAIN(TestNaturalOrder)
#include "tst_naturalorder.moc"
