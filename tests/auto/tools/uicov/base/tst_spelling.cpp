// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/spelling.h"
#include "testlib/testcase.h"

#include <QTest>

class TestSpelling : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void distancesAreCounted_data() {
        QTest::addColumn<QString>("a");
        QTest::addColumn<QString>("b");
        QTest::addColumn<int>("distance");
        QTest::newRow("equal") << "ignore"
                               << "ignore" << 0;
        QTest::newRow("case") << "Ignore"
                              << "iGNORE" << 0;
        QTest::newRow("one missing") << "ignor"
                                     << "ignore" << 1;
        QTest::newRow("one too many") << "iignore"
                                      << "ignore" << 1;
        QTest::newRow("one other") << "egnore"
                                   << "ignore" << 1;
        QTest::newRow("two changed places") << "ingore"
                                            << "ignore" << 2;
        QTest::newRow("nothing") << ""
                                 << "abc" << 3;
        QTest::newRow("all") << "abc"
                             << "" << 3;
    }

    void distancesAreCounted() {
        QFETCH(QString, a);
        QFETCH(QString, b);
        QFETCH(int, distance);
        QCOMPARE(Uicov::Base::editDistance(a, b), distance);
        QCOMPARE(Uicov::Base::editDistance(b, a), distance);
    }

    void theNearestIsTheFirstOfThose() {
        const QStringList choices{QStringLiteral("gates"), QStringLiteral("ignore"),
                                  QStringLiteral("labels"), QStringLiteral("label")};
        QCOMPARE(Uicov::Base::nearestSpelling(QStringLiteral("lable"), choices),
                 QStringLiteral("labels"));
        QCOMPARE(Uicov::Base::nearestSpelling(QStringLiteral("gate"), choices),
                 QStringLiteral("gates"));
        QVERIFY(Uicov::Base::nearestSpelling(QStringLiteral("x"), {}).isNull());
    }
};

QTEST_GUILESS_MAIN(TestSpelling)
#include "tst_spelling.moc"
