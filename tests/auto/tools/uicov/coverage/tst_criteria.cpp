// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/criteria.h"
#include "run/runelement.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::CoverageTree;
using Uicov::Coverage::Events;
using Uicov::Coverage::State;

class TestCriteria : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void onlyWhatCanBeAskedForIsACriterion() {
        for (const char* criterion : {"checked", "enabled", "way=menu", "way=*"}) {
            QVERIFY2(Uicov::Coverage::isCriterion(QLatin1String(criterion)), criterion);
        }
        for (const char* criterion : {"way=", "colour=red", "enabled=true"}) {
            QVERIFY2(!Uicov::Coverage::isCriterion(QLatin1String(criterion)), criterion);
        }
    }

    void aControlIsUsedWhenItMeetsAllThatIsAskedOfIt_data() {
        QTest::addColumn<QString>("criteria");
        QTest::addColumn<QString>("usedWays");
        QTest::addColumn<int>("triggered");
        QTest::addColumn<State>("state");
        QTest::newRow("nothing asked") << ""
                                       << "menu" << 1 << State::Used;
        QTest::newRow("the event") << "triggered"
                                   << "menu" << 1 << State::Used;
        QTest::newRow("the way") << "way=menu"
                                 << "menu" << 1 << State::Used;
        QTest::newRow("another way") << "way=shortcut"
                                     << "menu" << 1 << State::Shown;
        QTest::newRow("a way that it has not") << "way=toolBar"
                                               << "menu" << 1 << State::Used;
        QTest::newRow("each way, one used") << "way=*"
                                            << "menu" << 1 << State::Shown;
        QTest::newRow("each way, all used") << "way=*"
                                            << "menu shortcut" << 2 << State::Used;
        QTest::newRow("event and way") << "triggered way=shortcut"
                                       << "menu" << 1 << State::Shown;
        QTest::newRow("an event that it has not") << "checked"
                                                  << "menu" << 1 << State::Used;
        QTest::newRow("to be enabled") << "enabled"
                                       << "" << 0 << State::Used;
        QTest::newRow("not used at all") << "way=*"
                                         << "" << 0 << State::Shown;
    }

    void aControlIsUsedWhenItMeetsAllThatIsAskedOfIt() {
        QFETCH(QString, criteria);
        QFETCH(QString, usedWays);
        QFETCH(int, triggered);
        QFETCH(State, state);
        CoverageTree tree;
        tree.setCriteria(
            {{QStringLiteral("Command"), criteria.split(QLatin1Char(' '), Qt::SkipEmptyParts)}});
        const auto window = tree.window({QStringLiteral("Window"), QString(), QString(), 1});
        const auto command =
            tree.child(window, {QStringLiteral("Command"), QStringLiteral("Save"), QString(), 1});
        Uicov::Runs::RunElement element;
        element.type = QStringLiteral("Command");
        element.className = QStringLiteral("QAction");
        element.wasSeen = true;
        element.attributes.insert(QStringLiteral("ways"), QStringLiteral("menu shortcut"));
        element.attributes.insert(QStringLiteral("usedWays"), usedWays);
        tree.describe(command, element, QString());
        tree.noteControl(command, element);
        tree.count(command, Events{{QStringLiteral("triggered"), {triggered, false}}});
        QCOMPARE(tree.stateOf(command), state);
    }

    void whatIsNeverEnabledIsMissedOnRequest() {
        CoverageTree tree;
        const auto window = tree.window({QStringLiteral("Window"), QString(), QString(), 1});
        const auto button = tree.child(window, {QStringLiteral("Button"), QString(), QString(), 1});
        Uicov::Runs::RunElement element;
        element.wasEnabled = false;
        tree.noteControl(button, element);
        tree.count(button, Events{{QStringLiteral("clicked"), {0, false}}});
        QCOMPARE(tree.stateOf(button), State::Unavailable);
        QCOMPARE(tree.totals().elements, 0);
        QCOMPARE(tree.totals().unavailable, 1);
        tree.setCountsUnavailable(true);
        QCOMPARE(tree.stateOf(button), State::Missed);
        QCOMPARE(tree.totals().elements, 1);
        QCOMPARE(tree.totals().unavailable, 0);
    }
};

Q_DECLARE_METATYPE(State)

QTEST_GUILESS_MAIN(TestCriteria)
#include "tst_criteria.moc"
