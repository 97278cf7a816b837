#include "report/coveragerules.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QTest>

namespace CoverageRules = Uicov::Report::CoverageRules;
using Uicov::Report::EventCoverage;
using Uicov::Report::Events;
using Uicov::Report::State;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

Q_DECLARE_METATYPE(Uicov::Report::Events)
Q_DECLARE_METATYPE(Uicov::Report::State)

class TestCoverageRules : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void countableIsWhatIsNotTransparentAndHasEvents() {
        UIElement element(QStringLiteral("C"), StandardType(), QString());
        QVERIFY(!CoverageRules::isCountable(element));
        element.registerEvent(UIEvent(QStringLiteral("shown")));
        QVERIFY(CoverageRules::isCountable(element));
        element.setTransparentNode(true);
        QVERIFY(!CoverageRules::isCountable(element));
        element.setTransparentNode(false);
        element.setSubgraphTransparent(true); // concerns what is below
        QVERIFY(CoverageRules::isCountable(element));
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
        QCOMPARE(CoverageRules::stateOf(events), state);
    }

    void uncheckedOfAQtWidgetsCheckBoxIsNeverCounted() {
        UIElement element(QStringLiteral("MyCheckBox"), StandardType(QStringLiteral("CheckBox")),
                          QString());
        QVERIFY(CoverageRules::isNeverCounted(element, QStringLiteral("unchecked")));
        QVERIFY(!CoverageRules::isNeverCounted(element, QStringLiteral("checked")));
        QVERIFY(!CoverageRules::isNeverCounted(element, QStringLiteral("partiallyChecked")));
    }

    void uncheckedOfAQtQuickCheckBoxCounts() {
        UIElement element(QStringLiteral("CheckBox_QMLTYPE_4"),
                          StandardType(QStringLiteral("CheckBox")), QString());
        element.setSubgraphTransparent(true);
        QVERIFY(!CoverageRules::isNeverCounted(element, QStringLiteral("unchecked")));
    }

    void uncheckedOfACheckableQtQuickButtonCounts() {
        UIElement element(QStringLiteral("QQuickButton"), StandardType(QStringLiteral("Button")),
                          QString());
        QVERIFY(!CoverageRules::isNeverCounted(element, QStringLiteral("unchecked")));
    }

    void eventsComeWithCountAndRule() {
        UIElement element(QStringLiteral("QCheckBox"), StandardType(QStringLiteral("CheckBox")),
                          QString());
        element.registerEvent(UIEvent(QStringLiteral("unchecked")));
        element.increaseUsage(UIEvent(QStringLiteral("checked")));
        const Events events = CoverageRules::eventsOf(element);
        QCOMPARE(events.size(), 2);
        QCOMPARE(events.value(QStringLiteral("checked")).count, qint64{1});
        QVERIFY(!events.value(QStringLiteral("checked")).isNeverCounted);
        QVERIFY(events.value(QStringLiteral("unchecked")).isNeverCounted);
    }
};

QTEST_GUILESS_MAIN(TestCoverageRules)
#include "tst_coveragerules.moc"
