// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "uiabstraction/usagecounts.h"

#include <QRandomGenerator>
#include <QTest>

using Vorsk::UIAbstraction::UIEvent;
using Vorsk::UIAbstraction::UsageCounts;

namespace {

UIEvent numbered(int number) {
    return UIEvent(QStringLiteral("event %1").arg(number));
}

} // namespace

class tst_UsageCounts : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void knowsNothingAtFirst();
    void eventBecomesKnownWithNoUse();
    void nullNameIsAnEventLikeOthers();
    void agreesWithAMap_data();
    void agreesWithAMap();
};

void tst_UsageCounts::knowsNothingAtFirst() {
    const UsageCounts counts;
    QCOMPARE(counts.find(numbered(1)), nullptr);
    QVERIFY(counts.toMap().isEmpty());
}

void tst_UsageCounts::eventBecomesKnownWithNoUse() {
    UsageCounts counts;
    QCOMPARE(counts[numbered(1)], 0);
    QVERIFY(counts.find(numbered(1)) != nullptr);
    counts[numbered(1)] = 5;
    QCOMPARE(*counts.find(numbered(1)), 5);
    QCOMPARE(counts.find(numbered(2)), nullptr);
}

void tst_UsageCounts::nullNameIsAnEventLikeOthers() {
    UsageCounts counts;
    counts[UIEvent()] = 1;
    counts[numbered(1)] = 2;
    QCOMPARE(*counts.find(UIEvent()), 1);
    QCOMPARE(counts.toMap(), (QMap<UIEvent, int>{{UIEvent(), 1}, {numbered(1), 2}}));
}

void tst_UsageCounts::agreesWithAMap_data() {
    QTest::addColumn<int>("events");
    // Around the number from which on they are kept in another way, and far above it.
    for (int events : {1, 4, 15, 16, 17, 18, 500}) {
        QTest::addRow("%d events", events) << events;
    }
}

void tst_UsageCounts::agreesWithAMap() {
    QFETCH(int, events);
    QRandomGenerator random(static_cast<quint32>(events));
    UsageCounts counts;
    QMap<UIEvent, int> map;
    for (int step = 0; step < 10 * events; ++step) {
        const UIEvent event = numbered(random.bounded(events));
        QCOMPARE(counts.find(event) != nullptr, map.contains(event));
        ++counts[event];
        ++map[event];
        QCOMPARE(*counts.find(event), map.value(event));
    }
    QCOMPARE(counts.toMap(), map);
    // Also the order, which whoever writes them down goes by.
    QCOMPARE(counts.toMap().keys(), map.keys());
}

QTEST_GUILESS_MAIN(tst_UsageCounts)
#include "tst_usagecounts.moc"
