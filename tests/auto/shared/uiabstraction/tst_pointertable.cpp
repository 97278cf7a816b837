// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/testcase.h"
#include "uiabstraction/pointertable.h"

#include <QHash>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

using Vorsk::UIAbstraction::PointerTable;

class tst_PointerTable : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void isEmptyAtFirst();
    void keepsWhatItIsGiven();
    void nullIsAKeyLikeOthers();
    void removedValuesAreGivenBack();
    void growsFromNothingAgain();
    void removesWhatAPredicateNames();
    void behavesAsAHashDoes_data();
    void behavesAsAHashDoes();
    void stepsAreShortWhateverTheDistance_data();
    void stepsAreShortWhateverTheDistance();
};

namespace {

const void* address(quintptr number) {
    return reinterpret_cast<const void*>(number);
}

} // namespace

void tst_PointerTable::isEmptyAtFirst() {
    PointerTable<int> table;
    QCOMPARE(table.size(), std::size_t{0});
    QVERIFY(table.find(&table) == nullptr);
    QVERIFY(table.find(nullptr) == nullptr);
    QCOMPARE(table.value(&table), 0);
    QVERIFY(!table.remove(&table));
    QVERIFY(table.values().empty());
}

void tst_PointerTable::keepsWhatItIsGiven() {
    PointerTable<int> table;
    table[address(16)] = 1;
    table[address(32)] = 2;
    table[address(16)] += 10;
    QCOMPARE(table.size(), std::size_t{2});
    QCOMPARE(table.value(address(16)), 11);
    QCOMPARE(*table.find(address(32)), 2);
    QVERIFY(!table.contains(address(48)));
    QVERIFY(table.remove(address(16)));
    QVERIFY(!table.remove(address(16)));
    QVERIFY(!table.contains(address(16)));
    QCOMPARE(table.value(address(32)), 2);
}

void tst_PointerTable::nullIsAKeyLikeOthers() {
    PointerTable<int> table;
    table[nullptr] = 7;
    QCOMPARE(table.value(nullptr), 7);
    QVERIFY(table.remove(nullptr));
    QVERIFY(!table.contains(nullptr));
}

void tst_PointerTable::removedValuesAreGivenBack() {
    const auto shared = std::make_shared<int>(1);
    PointerTable<std::shared_ptr<int>> table;
    for (quintptr i = 1; i <= 100; ++i) {
        table[address(16 * i)] = shared;
    }
    QCOMPARE(shared.use_count(), 101L);
    for (quintptr i = 1; i <= 50; ++i) {
        table.remove(address(16 * i));
    }
    QCOMPARE(shared.use_count(), 51L);
    table.clear();
    QCOMPARE(shared.use_count(), 1L);
}

void tst_PointerTable::removesWhatAPredicateNames() {
    PointerTable<int> table;
    for (quintptr i = 0; i < 1000; ++i) {
        table[address(16 * i)] = static_cast<int>(i);
    }
    table.removeIf([](int value) { return value % 3 != 0; });
    QCOMPARE(table.size(), std::size_t{334});
    for (quintptr i = 0; i < 1000; ++i) {
        QCOMPARE(table.contains(address(16 * i)), i % 3 == 0);
    }
    table.removeIf([](int) { return true; });
    QCOMPARE(table.size(), std::size_t{0});
    table[address(16)] = 7;
    QCOMPARE(table.value(address(16)), 7);
}

void tst_PointerTable::growsFromNothingAgain() {
    PointerTable<int> table;
    table[address(16)] = 1;
    table.clear();
    QVERIFY(!table.contains(address(16)));
    table[address(16)] = 2;
    QCOMPARE(table.value(address(16)), 2);
}

void tst_PointerTable::behavesAsAHashDoes_data() {
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("keys");
    for (quint32 seed = 1; seed <= 40; ++seed) {
        // Few keys come and go in one place; many let the table grow.
        QTest::addRow("seed %u", seed) << seed << (seed % 2 == 0 ? 12 : 3000);
    }
}

void tst_PointerTable::behavesAsAHashDoes() {
    QFETCH(quint32, seed);
    QFETCH(int, keys);
    QRandomGenerator random(seed);
    PointerTable<int> table;
    QHash<const void*, int> hash;
    for (int step = 0; step < 20000; ++step) {
        const void* const key = address(quintptr(16) * quintptr(random.bounded(keys)));
        switch (random.bounded(3)) {
        case 0:
            QCOMPARE(table.remove(key), hash.remove(key) == 1);
            break;
        case 1:
            table[key] = step;
            hash[key] = step;
            break;
        default:
            QCOMPARE(table.contains(key), hash.contains(key));
            QCOMPARE(table.value(key), hash.value(key));
        }
    }
    QCOMPARE(table.size(), static_cast<std::size_t>(hash.size()));
    for (auto it = hash.cbegin(); it != hash.cend(); ++it) {
        QVERIFY(table.contains(it.key()));
        QCOMPARE(table.value(it.key()), it.value());
    }
    std::vector<int> values = table.values();
    std::sort(values.begin(), values.end());
    QList<int> expected = hash.values();
    std::sort(expected.begin(), expected.end());
    QCOMPARE(QList<int>(values.begin(), values.end()), expected);
}

void tst_PointerTable::stepsAreShortWhateverTheDistance_data() {
    QTest::addColumn<int>("distance");
    for (const int distance : {8, 16, 24, 48, 64, 96, 128, 272, 512, 1024, 4096, 65536}) {
        QTest::addRow("%d bytes", distance) << distance;
    }
}

namespace {

/** Counts how often it is looked at. */
struct Counted {
    static int moves;
    Counted() = default;
    Counted(const Counted&) = default;
    Counted(Counted&&) = default;
    Counted& operator=(const Counted&) = default;
    Counted& operator=(Counted&&) noexcept {
        ++moves;
        return *this;
    }
    ~Counted() = default;
};
int Counted::moves = 0;

} // namespace

/** Objects stand side by side at a distance that is their size; entries that are in each other's
 * way have to be moved when one goes. */
void tst_PointerTable::stepsAreShortWhateverTheDistance() {
    QFETCH(int, distance);
    constexpr int count = 6000; // nearly as many as there is room for without growing
    PointerTable<Counted> table;
    for (int i = 0; i < count; ++i) {
        table[address(0x55550000U + quintptr(distance) * quintptr(i))];
    }
    Counted::moves = 0;
    for (int i = 0; i < count; ++i) {
        QVERIFY(table.remove(address(0x55550000U + quintptr(distance) * quintptr(i))));
    }
    QVERIFY2(Counted::moves < 4 * count, qPrintable(QString::number(Counted::moves)));
}

QTEST_APPLESS_MAIN(tst_PointerTable)

#include "tst_pointertable.moc"
