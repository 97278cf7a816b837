// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coveragetree.h"
#include "run/runelement.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::CoverageTree;
using Uicov::Coverage::EventCoverage;
using Uicov::Coverage::Events;
using Uicov::Runs::ElementKey;

namespace {

ElementKey::Step step(const char* kind, const char* label = "", int ordinal = 1) {
    return {QLatin1String(kind), QLatin1String(label), QString(), ordinal};
}

const QString shown = QStringLiteral("shown");
const QString clicked = QStringLiteral("clicked");

} // namespace

class TestCoverageTree : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void equalKeysAreOneNode() {
        CoverageTree tree;
        const auto window = tree.window(step("Window", "A"));
        QCOMPARE(tree.window(step("Window", "A")), window);
        QVERIFY(tree.window(step("Window", "B")) != window);
        const auto button = tree.child(window, step("Button", "OK"));
        QCOMPARE(tree.child(window, step("Button", "OK")), button);
        QVERIFY(tree.child(window, step("Button", "OK", 2)) != button);
        QVERIFY(tree.child(button, step("Button", "OK")) != button);
        QCOMPARE(tree.keyOf(button).toString(), QStringLiteral("Window \"A\" > Button \"OK\""));
    }

    void whatIsUsedInOneOfTwoIsUsed() {
        CoverageTree tree;
        const auto window = tree.window(step("Window", "A"));
        const auto button = tree.child(window, step("Button", "OK"));
        tree.count(button, Events{{shown, {1, false}}, {clicked, {0, false}}});
        QCOMPARE(tree.totalsOf(window).shown, 1);
        tree.count(button, Events{{shown, {2, false}}, {clicked, {3, false}}});
        const CoverageTree::Totals totals = tree.totalsOf(window);
        QCOMPARE(totals.elements, 1);
        QCOMPARE(totals.used, 1);
        QCOMPARE(totals.events, 2);
        QCOMPARE(totals.coveredEvents, 2);
        QCOMPARE(tree.node(button).events.value(shown).count, qint64{3});
    }

    void eventsOfBothAreJoined() {
        CoverageTree tree;
        const auto window = tree.window(step("Window", "A"));
        tree.count(window, Events{{shown, {1, false}}});
        QCOMPARE(tree.totalsOf(window).used, 1);
        tree.count(window, Events{{clicked, {0, false}}});
        QCOMPARE(tree.totalsOf(window).shown, 1);
        QCOMPARE(tree.totalsOf(window).events, 2);
    }

    void theOrderOfCountingMakesNoDifference() {
        const QVector<QPair<ElementKey::Step, Events>> counted{
            {step("Button", "b"), Events{{clicked, {1, false}}}},
            {step("Button", "a"), Events{{clicked, {0, false}}, {shown, {1, false}}}},
            {step("Button", "b"), Events{{clicked, {0, false}}, {shown, {0, false}}}},
        };
        QVector<int> order{0, 1, 2};
        QStringList results;
        do {
            CoverageTree tree;
            const auto window = tree.window(step("Window"));
            for (const int index : qAsConst(order)) {
                tree.count(tree.child(window, counted.at(index).first), counted.at(index).second);
            }
            QString result;
            for (const auto node : tree.nodesOf(window)) {
                result += tree.keyOf(node).toString() + QLatin1Char('\n');
            }
            const CoverageTree::Totals totals = tree.totalsOf(window);
            result +=
                QStringLiteral("%1 %2 %3").arg(totals.used).arg(totals.shown).arg(totals.events);
            results.append(result);
        } while (std::next_permutation(order.begin(), order.end()));
        QCOMPARE(results.size(), 6);
        results.removeDuplicates();
        QCOMPARE(results.size(), 1);
    }

    void onlyCountableNodesAreCounted() {
        CoverageTree tree;
        const auto window = tree.window(step("Window"));
        const auto step1 = tree.child(window, step("QWidget"));
        tree.count(tree.child(step1, step("Button")), Events{{clicked, {0, false}}});
        const CoverageTree::Totals totals = tree.totalsOf(window);
        QCOMPARE(totals.elements, 1);
        QCOMPARE(totals.missed, 1);
    }

    void eventsThatAreNeverCountedStandOutsideTheRatio() {
        CoverageTree tree;
        const auto window = tree.window(step("Window"));
        tree.count(window, Events{{shown, {1, false}}, {QStringLiteral("unchecked"), {0, true}}});
        const CoverageTree::Totals totals = tree.totalsOf(window);
        QCOMPARE(totals.events, 1);
        QCOMPARE(totals.coveredEvents, 1);
        QCOMPARE(totals.neverCountedEvents, 1);
    }

    void stateOfAControl_data() {
        QTest::addColumn<bool>("isUsed");
        QTest::addColumn<bool>("wasEnabled");
        QTest::addColumn<bool>("wasSeen");
        QTest::addColumn<QString>("word");
        QTest::newRow("used") << true << true << true << "used";
        QTest::newRow("used in a view that was not seen") << true << true << false << "used";
        QTest::newRow("seen") << false << true << true << "seen";
        QTest::newRow("missed") << false << true << false << "missed";
        QTest::newRow("unavailable") << false << false << false << "unavailable";
    }

    void stateOfAControl() {
        QFETCH(bool, isUsed);
        QFETCH(bool, wasEnabled);
        QFETCH(bool, wasSeen);
        QFETCH(QString, word);
        CoverageTree tree;
        const auto window = tree.window(step("Window"));
        const auto button = tree.child(window, step("Button"));
        Uicov::Runs::RunElement element;
        element.wasEnabled = wasEnabled;
        element.wasSeen = wasSeen;
        tree.noteView(window, true);
        tree.noteControl(button, element);
        tree.count(button, Events{{clicked, {isUsed ? 1 : 0, false}}});
        QVERIFY(tree.isOfControls());
        QCOMPARE(Uicov::Coverage::wordForControl(tree.stateOf(button)), word);
        const CoverageTree::Totals totals = tree.totals();
        QCOMPARE(totals.views, 1);
        QCOMPARE(totals.seenViews, 1);
        QCOMPARE(totals.elements, word == QLatin1String("unavailable") ? 0 : 1);
        QCOMPARE(totals.unavailable, word == QLatin1String("unavailable") ? 1 : 0);
        QCOMPARE(totals.used, isUsed ? 1 : 0);
    }

    void whatAnyRunKnewOfAControlAddsUp() {
        CoverageTree tree;
        const auto button = tree.child(tree.window(step("Window")), step("Command"));
        Uicov::Runs::RunElement first;
        first.wasEnabled = false;
        first.attributes.insert(QStringLiteral("ways"), QStringLiteral("toolBar menu"));
        Uicov::Runs::RunElement second;
        second.wasSeen = true;
        second.attributes.insert(QStringLiteral("ways"), QStringLiteral("menu shortcut"));
        second.attributes.insert(QStringLiteral("usedWays"), QStringLiteral("menu"));
        tree.noteControl(button, first);
        tree.noteControl(button, second);
        tree.noteControl(button, first);
        const CoverageTree::Node& node = tree.node(button);
        QVERIFY(node.wasEnabled && node.wasSeen);
        QCOMPARE(node.ways, QStringList({QStringLiteral("menu"), QStringLiteral("shortcut"),
                                         QStringLiteral("toolBar")}));
        QCOMPARE(node.usedWays, QStringList{QStringLiteral("menu")});
        tree.noteMembers(button, 3, 1, {});
        tree.noteMembers(button, 2, 2, {});
        QCOMPARE(tree.node(button).members, 3);
        QCOMPARE(tree.node(button).usedMembers, 2);
    }

    void aViewIsOpenedByTheControlOfTheLeastKey() {
        CoverageTree tree;
        const auto view = tree.window(step("Dialog"));
        const auto window = tree.window(step("Window"));
        const auto a = tree.child(window, step("a"));
        tree.noteOpener(view, tree.child(window, step("b")));
        tree.noteOpener(view, a);
        tree.noteOpener(view, tree.child(window, step("c")));
        QCOMPARE(tree.node(view).openedBy, QStringLiteral("Window > a"));
        QCOMPARE(tree.node(view).opener, a);
    }

    void aGroupIsCalledAsItsMembersAreWhenAllHaveOneName() {
        CoverageTree tree;
        const auto window = tree.window(step("Window"));
        CoverageTree::ElementKey::Step made = step("Button", "page/rows/Row");
        made.caption = QStringLiteral("Row");
        const auto row = tree.child(window, made);
        tree.noteMembers(row, 2, 1, {{QStringLiteral("Delete"), true}});
        QCOMPARE(tree.node(row).step.caption, QStringLiteral("Delete"));
        tree.noteMembers(row, 1, 0, {{QStringLiteral("Delete"), false}});
        QCOMPARE(tree.node(row).memberNames.value(QStringLiteral("Delete")), true);
        tree.noteMembers(row, 1, 0, {{QStringLiteral("Keep"), false}});
        QCOMPARE(tree.node(row).step.caption, QStringLiteral("Row"));
    }

    void nodesComeBeforeWhatIsBelowThem() {
        CoverageTree tree;
        const auto window = tree.window(step("Window"));
        const auto b = tree.child(window, step("b"));
        const auto a = tree.child(window, step("a"));
        const auto below = tree.child(a, step("z"));
        QCOMPARE(tree.nodesOf(window), std::vector<Uicov::Coverage::NodeId>({window, a, below, b}));
    }
};

QTEST_GUILESS_MAIN(TestCoverageTree)
#include "tst_coveragetree.moc"
