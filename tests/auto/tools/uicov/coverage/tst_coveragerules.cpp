// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coveragerules.h"
#include "run/runelement.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::ContextId;
using Uicov::Coverage::EventCoverage;
using Uicov::Coverage::Events;
using Uicov::Coverage::State;
using Uicov::Runs::Hit;
using Uicov::Runs::RunElement;

Q_DECLARE_METATYPE(Uicov::Coverage::Events)
Q_DECLARE_METATYPE(Uicov::Coverage::State)

class TestCoverageRules : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void countableIsWhatIsNotTransparentAndHasEvents() {
        RunElement element;
        QVERIFY(!Uicov::Coverage::isCountable(element));
        element.events = QStringList{QStringLiteral("shown")};
        QVERIFY(Uicov::Coverage::isCountable(element));
        element.isTransparentNode = true;
        QVERIFY(!Uicov::Coverage::isCountable(element));
        element.isTransparentNode = false;
        element.isSubgraphTransparent = true; // concerns what is below
        QVERIFY(Uicov::Coverage::isCountable(element));
    }

    void stateFollowsFromEvents_data() {
        QTest::addColumn<Events>("events");
        QTest::addColumn<State>("state");
        const QString shown = QStringLiteral("shown");
        const QString clicked = QStringLiteral("clicked");
        const QString never = QStringLiteral("unchecked");
        QTest::newRow("nothing counted")
            << Events{{shown, {0, false}}, {clicked, {0, false}}} << State::Missed;
        QTest::newRow("only shown, more to do")
            << Events{{shown, {3, false}}, {clicked, {0, false}}} << State::Shown;
        QTest::newRow("clicked") << Events{{shown, {1, false}}, {clicked, {1, false}}}
                                 << State::Used;
        QTest::newRow("clicked without shown")
            << Events{{shown, {0, false}}, {clicked, {1, false}}} << State::Used;
        QTest::newRow("shown is all there is") << Events{{shown, {1, false}}} << State::Used;
        QTest::newRow("shown is all there is, missed")
            << Events{{shown, {0, false}}} << State::Missed;
        QTest::newRow("no shown, not clicked") << Events{{clicked, {0, false}}} << State::Missed;
        QTest::newRow("no shown, clicked") << Events{{clicked, {2, false}}} << State::Used;
        QTest::newRow("what is never counted is no event")
            << Events{{shown, {1, false}}, {never, {0, true}}} << State::Used;
        QTest::newRow("negative counts are none")
            << Events{{shown, {1, false}}, {clicked, {-1, false}}} << State::Shown;
    }

    void stateFollowsFromEvents() {
        QFETCH(Events, events);
        QFETCH(State, state);
        QCOMPARE(Uicov::Coverage::stateOf(events), state);
    }

    void uncheckedOfAQtWidgetsCheckBoxIsNeverCounted() {
        RunElement element;
        element.type = QStringLiteral("CheckBox");
        QVERIFY(Uicov::Coverage::isNeverCounted(element, QStringLiteral("unchecked")));
        QVERIFY(!Uicov::Coverage::isNeverCounted(element, QStringLiteral("checked")));
        QVERIFY(!Uicov::Coverage::isNeverCounted(element, QStringLiteral("partiallyChecked")));
    }

    void uncheckedOfAQtQuickCheckBoxCounts() {
        RunElement element;
        element.type = QStringLiteral("CheckBox");
        element.isSubgraphTransparent = true;
        QVERIFY(!Uicov::Coverage::isNeverCounted(element, QStringLiteral("unchecked")));
    }

    void uncheckedOfACheckableQtQuickButtonCounts() {
        RunElement element;
        element.type = QStringLiteral("Button");
        QVERIFY(!Uicov::Coverage::isNeverCounted(element, QStringLiteral("unchecked")));
    }

    void eventsComeWithCountRuleAndContexts() {
        RunElement element;
        element.type = QStringLiteral("CheckBox");
        const QString checked = QStringLiteral("checked");
        const QString unchecked = QStringLiteral("unchecked");
        element.events = QStringList{checked, unchecked};
        element.hits = {Hit{checked, 0, 2}, Hit{checked, 1, 5}};
        const Events events = Uicov::Coverage::eventsOf(element, {ContextId(7), ContextId(3)});
        QCOMPARE(events.size(), 2);
        QCOMPARE(events.value(checked).count, qint64{7});
        QCOMPARE(events.value(checked).byContext,
                 (QMap<ContextId, qint64>{{ContextId(7), 2}, {ContextId(3), 5}}));
        QVERIFY(!events.value(checked).isNeverCounted);
        QVERIFY(events.value(unchecked).isNeverCounted);
        QVERIFY(events.value(unchecked).byContext.isEmpty());
    }

    void whatWasNeverAnnouncedIsNoEvent() {
        RunElement element;
        element.events = QStringList{QStringLiteral("shown")};
        element.hits = {Hit{QStringLiteral("clicked"), 0, 1}};
        QCOMPARE(Uicov::Coverage::eventsOf(element, {ContextId(0)}).keys(), element.events);
    }
};

QTEST_GUILESS_MAIN(TestCoverageRules)
#include "tst_coveragerules.moc"
