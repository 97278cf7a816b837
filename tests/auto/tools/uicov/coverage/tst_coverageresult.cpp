// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coverageresult.h"
#include "testlib/runmaker.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::Configuration;
using Uicov::Coverage::CoverageResult;
using Uicov::Coverage::IgnoreRule;
using Uicov::Coverage::Pattern;

class TestCoverageResult : public TestLib::TestCase {
    Q_OBJECT

    Configuration m_configuration;

    /** Keys of the elements that count, with their states. */
    QStringList states(const QStringList& contexts = {}) {
        QVector<Pattern> patterns;
        for (const QString& context : contexts) {
            patterns.append(Pattern(context));
        }
        CoverageResult coverage(m_configuration, patterns);
        coverage.add(TestLib::panelRun());
        coverage.finish();
        m_uses = coverage.ruleUses();
        QStringList lines;
        const auto& tree = coverage.tree();
        const auto windows = tree.windows();
        for (const auto window : windows) {
            for (const auto node : tree.nodesOf(window)) {
                if (tree.counts(node)) {
                    static const char* const names[] = {"used", "shown", "missed"};
                    lines.append(tree.keyOf(node).toKey() + QLatin1Char(' ') +
                                 QLatin1String(names[static_cast<int>(tree.stateOf(node))]));
                }
            }
        }
        return lines;
    }

    void ignore(const IgnoreRule& rule) { m_configuration.ignoreRules.append(rule); }

    QVector<CoverageResult::RuleUse> m_uses;

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_configuration = Configuration();
    }

    void cleanup() { TestLib::TestCase::cleanup(); }

    void withoutRulesEverythingCounts() {
        QCOMPARE(
            states(),
            QStringList({QStringLiteral("Dialog \"About\" used"),
                         QStringLiteral("Dialog \"About\" > Button \"Close\" used"),
                         QStringLiteral("Window \"Panel\" used"),
                         QStringLiteral("Window \"Panel\" > Button \"Start\" used"),
                         QStringLiteral("Window \"Panel\" > Button \"Stop\" shown"),
                         QStringLiteral("Window \"Panel\" > CheckBox \"Pump\" used"),
                         QStringLiteral("Window \"Panel\" > MenuBar used"),
                         QStringLiteral("Window \"Panel\" > MenuBar > MenuItem \"Help\" shown"),
                         QStringLiteral("Window \"Panel\" > TextInput used")}));
    }

    void rulesLeaveElementsOut_data() {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("window");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("className");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("elements");
        QTest::addColumn<int>("used");
        const auto row = [](const char* name, const char* key, const char* window, const char* type,
                            const char* className, const char* text, int elements, int used) {
            const auto given = [](const char* value) {
                return value == nullptr ? QString() : QString::fromLatin1(value);
            };
            QTest::newRow(name) << given(key) << given(window) << given(type) << given(className)
                                << given(text) << elements << used;
        };
        row("key", "Window \"Panel\" > Button \"Stop\"", nullptr, nullptr, nullptr, nullptr, 1, 0);
        row("keys", "*Button*", nullptr, nullptr, nullptr, nullptr, 3, 2);
        row("window's step", nullptr, "Dialog*", nullptr, nullptr, nullptr, 2, 2);
        row("window's label", nullptr, "About", nullptr, nullptr, nullptr, 2, 2);
        row("type", nullptr, nullptr, "CheckBox", nullptr, nullptr, 1, 1);
        row("class", nullptr, nullptr, nullptr, "QMenu*", nullptr, 1, 1);
        row("text", nullptr, nullptr, nullptr, nullptr, "St?p", 1, 0);
        row("all of it", "*", "Panel", "Button", "QPushButton", "Start", 1, 1);
        row("not all of it", "*", "About", "Button", "QPushButton", "Start", 0, 0);
        row("nothing like it", "nothing", nullptr, nullptr, nullptr, nullptr, 0, 0);
    }

    void rulesLeaveElementsOut() {
        QFETCH(QString, key);
        QFETCH(QString, window);
        QFETCH(QString, type);
        QFETCH(QString, className);
        QFETCH(QString, text);
        QFETCH(int, elements);
        QFETCH(int, used);
        const int all = states().size();
        const auto pattern = [](const QString& glob) {
            return glob.isNull() ? Pattern() : Pattern(glob);
        };
        IgnoreRule rule;
        rule.key = pattern(key);
        rule.window = pattern(window);
        rule.type = pattern(type);
        rule.className = pattern(className);
        rule.text = pattern(text);
        ignore(rule);
        QCOMPARE(states().size(), all - elements);
        QCOMPARE(m_uses.at(0).elements, elements);
        QCOMPARE(m_uses.at(0).usedElements, used);
    }

    void aTextIsMatchedAsRecordedAndAsACaption() {
        for (const char* text : {"Open...\tCtrl+O", "Open", "Open*O"}) {
            IgnoreRule rule;
            rule.text = Pattern(QString::fromLatin1(text));
            m_configuration.ignoreRules = {rule};
            TestLib::RunMaker maker;
            maker.addButton(maker.addWindow(QStringLiteral("W")),
                            QStringLiteral("Open...\tCtrl+O"));
            CoverageResult coverage(m_configuration);
            coverage.add(maker.run);
            coverage.finish();
            QVERIFY2(coverage.ruleUses().at(0).elements == 1, text);
        }
    }

    void theFirstRuleThatFitsCounts() {
        IgnoreRule buttons;
        buttons.type = Pattern(QStringLiteral("Button"));
        IgnoreRule stop;
        stop.text = Pattern(QStringLiteral("Stop"));
        ignore(buttons);
        ignore(stop);
        states();
        QCOMPARE(m_uses.at(0).elements, 3);
        QCOMPARE(m_uses.at(1).elements, 0);
    }

    void criteriaAskForCertainEvents() {
        const QString box = QStringLiteral("Window \"Panel\" > CheckBox \"Pump\" ");
        QVERIFY(states().contains(box + QStringLiteral("used")));
        m_configuration.criteria.insert(QStringLiteral("CheckBox"), {QStringLiteral("checked")});
        QVERIFY(states().contains(box + QStringLiteral("shown")));
        // Events that an element does not have cannot be asked of it.
        m_configuration.criteria.insert(QStringLiteral("CheckBox"), {QStringLiteral("toggled")});
        QVERIFY(states().contains(box + QStringLiteral("used")));
        // Nor can one that is never counted.
        m_configuration.criteria.insert(QStringLiteral("CheckBox"),
                                        {QStringLiteral("unchecked"), QStringLiteral("clicked")});
        QVERIFY(states().contains(box + QStringLiteral("used")));
    }

    void onlyTheWantedContextsCount() {
        const QStringList lines = states({QStringLiteral("*pump")});
        QVERIFY(lines.contains(QStringLiteral("Window \"Panel\" > CheckBox \"Pump\" used")));
        QVERIFY(lines.contains(QStringLiteral("Window \"Panel\" > Button \"Start\" missed")));
        QCOMPARE(states({QStringLiteral("*")}), states());
        QCOMPARE(lines.size(), states().size());
    }

    void labelRulesMakeElementsOne() {
        m_configuration.labelRules = {
            {QRegularExpression(QStringLiteral("^(Start|Stop)$")), QStringLiteral("Motor")}};
        const QStringList lines = states();
        QVERIFY(lines.contains(QStringLiteral("Window \"Panel\" > Button \"Motor\" used")));
        QVERIFY(lines.contains(QStringLiteral("Window \"Panel\" > Button \"Motor\" #2 shown")));
    }

    void aRuleMayGiveTheBeginningOfOneKeyOrName_data() {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("elements");
        QTest::newRow("a key's") << QStringLiteral("Window \"Panel\" > Button \"sta") << 1;
        QTest::newRow("a name's") << QStringLiteral("Window \"Panel\" > Button \"Sta") << 1;
        QTest::newRow("a whole name") << QStringLiteral("Window \"Panel\" > Button \"Start\"") << 1;
        QTest::newRow("of several") << QStringLiteral("Window \"Panel\" > Button \"") << 0;
        QTest::newRow("of none") << QStringLiteral("Button \"Start") << 0;
        QTest::newRow("a view") << QStringLiteral("Window \"Panel\" > Page \"Gen") << 0;
    }

    void aRuleMayGiveTheBeginningOfOneKeyOrName() {
        QFETCH(QString, key);
        QFETCH(int, elements);
        IgnoreRule rule;
        rule.key = Pattern(key);
        ignore(rule);
        CoverageResult coverage(m_configuration);
        coverage.add(TestLib::controlsRun());
        coverage.finish();
        QCOMPARE(coverage.ruleUses().at(0).elements, elements);
    }

    void aViewThatIsLeftOutIsInNoNumber() {
        IgnoreRule rule;
        rule.key = Pattern(QStringLiteral("*Page \"Advanced\"*"));
        ignore(rule);
        CoverageResult coverage(m_configuration);
        coverage.add(TestLib::controlsRun());
        coverage.finish();
        const auto totals = coverage.tree().totals();
        QCOMPARE(totals.views, 2);
        QCOMPARE(totals.missed, 0);
        QCOMPARE(coverage.ruleUses().at(0).elements, 3);
        QCOMPARE(coverage.ruleUses().at(0).usedElements, 0);
    }

    void groupsOfAProjectAreOneEach() {
        m_configuration.groups = {
            qMakePair(QStringLiteral("heating"),
                      QVector<Pattern>{Pattern(QStringLiteral("*CheckBox \"*er\""))})};
        CoverageResult coverage(m_configuration);
        coverage.add(TestLib::controlsRun());
        coverage.finish();
        const auto& tree = coverage.tree();
        QCOMPARE(tree.totals().elements, 8); // 9 without the group
        for (const auto node : tree.nodesOf(tree.windows().first())) {
            if (tree.node(node).step.label == QLatin1String("heating")) {
                QCOMPARE(tree.node(node).members, 2);
                QCOMPARE(tree.node(node).memberNames.keys(),
                         QStringList({QStringLiteral("Cooler"), QStringLiteral("Heater")}));
                return;
            }
        }
        QFAIL("there is no group");
    }

    void criteriaThatNoControlCanMeetAreTold() {
        m_configuration.criteria = {
            {QStringLiteral("Command"), {QStringLiteral("way=menu"), QStringLiteral("way=tray")}},
            {QStringLiteral("CheckBox"), {QStringLiteral("enabled"), QStringLiteral("way=*")}}};
        CoverageResult coverage(m_configuration);
        coverage.add(TestLib::controlsRun());
        coverage.finish();
        const auto unused = coverage.unusedCriteria();
        QCOMPARE(unused.size(), 2);
        QCOMPARE(unused.at(0).event, QStringLiteral("way=*"));
        QCOMPARE(unused.at(1).event, QStringLiteral("way=tray"));
    }

    void aRunOfTheUniverseIsCountedForWhatItKnows() {
        // One that has done nothing, and has a button less.
        Uicov::Runs::Run idle = TestLib::controlsRun(2);
        idle.elements.resize(4);
        idle.elements[0].children = {1, 2, 3};
        for (auto& element : idle.elements) {
            element.hits.clear();
            element.wasSeen = false;
        }
        CoverageResult alone(m_configuration);
        alone.add(idle);
        alone.finish();
        QCOMPARE(alone.tree().totals().elements, 2);
        CoverageResult coverage(m_configuration);
        coverage.add(idle);
        coverage.addKnown(TestLib::controlsRun(1));
        coverage.finish();
        const auto totals = coverage.tree().totals();
        QCOMPARE(totals.elements, 9);
        QCOMPARE(totals.views, 3);
        QCOMPARE(totals.used + totals.shown + totals.seenViews, 0);
        QCOMPARE(coverage.runs().size(), std::size_t{1});
        QCOMPARE(coverage.knownRuns(), 1);
        const auto nodes = coverage.tree().nodesOf(coverage.tree().windows().first());
        for (const auto node : nodes) {
            QVERIFY(coverage.tree().node(node).usedWays.isEmpty());
        }
    }

    void whatOnlyAnOlderVersionHadIsFound_data() {
        QTest::addColumn<QString>("old");
        QTest::addColumn<QString>("current");
        QTest::addColumn<int>("outdated");
        QTest::newRow("of an older version") << "1.9"
                                             << "1.10" << 9;
        QTest::newRow("of the same version") << "1.10"
                                             << "1.10" << 0;
        QTest::newRow("of no version") << ""
                                       << "1.10" << 0;
        QTest::newRow("no run tells") << ""
                                      << "" << 0;
    }

    void whatOnlyAnOlderVersionHadIsFound() {
        QFETCH(QString, old);
        QFETCH(QString, current);
        QFETCH(int, outdated);
        const QString label = QStringLiteral("version");
        Uicov::Runs::Run first = TestLib::controlsRun(1);
        first.started = QStringLiteral("2026-01-01T00:00:00Z");
        Uicov::Runs::Run second = TestLib::controlsRun(2);
        second.started = QStringLiteral("2026-01-02T00:00:00Z");
        second.elements.resize(4); // the window and three buttons
        second.elements[0].children = {1, 2, 3};
        if (!old.isEmpty()) {
            first.labels.insert(label, old);
        }
        if (!current.isEmpty()) {
            second.labels.insert(label, current);
        }
        CoverageResult coverage(m_configuration);
        coverage.add(second);
        coverage.add(first);
        coverage.finish();
        const auto& tree = coverage.tree();
        int marked = 0;
        const auto nodes = tree.nodesOf(tree.windows().first());
        for (const auto node : nodes) {
            const QString version = tree.node(node).lastVersion;
            QVERIFY(version.isEmpty() || version == old);
            marked += version.isEmpty() ? 0 : 1;
        }
        QCOMPARE(marked, outdated);
        QCOMPARE(coverage.outdated(), outdated);
    }

    void controlsThatTheClassicExtensionDoesNotWatchAreTold() {
        TestLib::RunMaker maker;
        const int window = maker.addWindow(QStringLiteral("Panel"));
        for (const char* name : {"QToolButton", "QSpinBox", "QToolButton", "QFrame"}) {
            maker.element(maker.add(window, "", name, QString(), "shown")).isTransparentNode = true;
        }
        CoverageResult coverage(m_configuration);
        coverage.add(maker.run);
        maker.run.uuid = QStringLiteral("other");
        coverage.add(maker.run);
        coverage.finish();
        const QMap<QString, int> expected{{QStringLiteral("QSpinBox"), 1},
                                          {QStringLiteral("QToolButton"), 2}};
        QCOMPARE(coverage.unwatched(), expected);
        maker.run.extension = QStringLiteral("libqtuicontrols");
        CoverageResult controls(m_configuration);
        controls.add(maker.run);
        QVERIFY(controls.unwatched().isEmpty());
    }

    void runsAndWarningsAreKept() {
        CoverageResult coverage(m_configuration);
        coverage.add(TestLib::panelRun(1));
        coverage.add(TestLib::panelRun(2));
        coverage.add(TestLib::hostileRun());
        coverage.finish();
        QCOMPARE(coverage.runs().size(), std::size_t{3});
        QCOMPARE(coverage.partialRuns(), 1);
        QCOMPARE(coverage.warnings().value(QStringLiteral("No action at (3,4)")), qint64{4});
        QVERIFY(coverage.runs().front().elements.empty());
    }
};

QTEST_GUILESS_MAIN(TestCoverageResult)
#include "tst_coverageresult.moc"
