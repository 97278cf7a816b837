// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/runhistory.h"
#include "run/run.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::Configuration;
using Uicov::Coverage::CoverageResult;
using Uicov::Coverage::IgnoreRule;
using Uicov::Coverage::Pattern;
using Uicov::Report::Html::RunHistory;
using Uicov::Runs::Run;
using Uicov::Runs::RunElement;

namespace {

/** A window with two buttons, of which those are clicked. */
Run run(const QStringList& clicked) {
    Run run;
    run.contexts = QStringList{QString(), QStringLiteral("login")};
    RunElement window;
    window.type = QStringLiteral("Window");
    window.className = QStringLiteral("QMainWindow");
    window.text = QStringLiteral("Panel");
    window.isWindowNode = true;
    run.elements.push_back(window);
    for (const char* text : {"OK", "Cancel"}) {
        RunElement button;
        button.type = QStringLiteral("Button");
        button.text = QLatin1String(text);
        button.events = QStringList{QStringLiteral("clicked")};
        button.parent = 0;
        if (clicked.contains(button.text)) {
            button.hits.append({QStringLiteral("clicked"), 1, 1});
        }
        run.elements.front().children.append(static_cast<int>(run.elements.size()));
        run.elements.push_back(button);
    }
    return run;
}

RunHistory historyOf(const QVector<Run>& runs, const Configuration& configuration = {},
                     const QVector<Pattern>& contexts = {}) {
    CoverageResult coverage(configuration, contexts);
    RunHistory history;
    for (const Run& one : runs) {
        coverage.add(one);
        history.add(one, coverage);
    }
    coverage.finish();
    history.finish(coverage);
    return history;
}

} // namespace

class TestRunHistory : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void nothing() {
        QVERIFY(RunHistory().rows().isEmpty());
        QCOMPARE(RunHistory().partialRuns(), 0);
    }

    void eachRunByItselfAndWhatItWasTheFirstToUse() {
        const QString ok = QStringLiteral("OK");
        const RunHistory history =
            historyOf({run({ok}), run({ok}), run({}), run({ok, QStringLiteral("Cancel")})});
        QVector<int> used;
        QVector<int> first;
        for (const RunHistory::Row& row : history.rows()) {
            QCOMPARE(row.totals.elements, 2);
            used.append(row.totals.used);
            first.append(row.firstUsed);
        }
        QCOMPARE(used, (QVector<int>{1, 1, 0, 2}));
        QCOMPARE(first, (QVector<int>{1, 0, 0, 1}));
    }

    void whatIsLeftOutCountsForNoRun() {
        Configuration configuration;
        IgnoreRule rule;
        rule.text = Pattern(QStringLiteral("OK"));
        configuration.ignoreRules.append(rule);
        const RunHistory history =
            historyOf({run({QStringLiteral("OK"), QStringLiteral("Cancel")})}, configuration);
        QCOMPARE(history.rows().first().totals.elements, 1);
        QCOMPARE(history.rows().first().totals.used, 1);
        QCOMPARE(history.rows().first().firstUsed, 1);
    }

    void criteriaHoldForEachRun() {
        Configuration configuration;
        configuration.criteria.insert(QStringLiteral("Button"),
                                      {QStringLiteral("clicked"), QStringLiteral("pressed")});
        Run half = run({QStringLiteral("OK")});
        for (RunElement& element : half.elements) {
            element.events.append(QStringLiteral("pressed"));
        }
        Run other = half;
        other.elements[1].hits = {{QStringLiteral("pressed"), 0, 1}};
        const RunHistory history = historyOf({half, other}, configuration);
        QCOMPARE(history.rows().at(0).totals.used, 0);
        QCOMPARE(history.rows().at(1).totals.used, 0);
        QCOMPARE(history.rows().at(0).firstUsed, 0);
        QCOMPARE(history.rows().at(1).firstUsed, 1); // together they did all that is asked
    }

    void onlyWhatHappenedInContextsThatCountIsUsed() {
        const Run login = run({QStringLiteral("OK")});
        const QVector<Pattern> others{Pattern(QStringLiteral("logout"))};
        QCOMPARE(historyOf({login}, {}, others).rows().first().totals.used, 0);
        const QVector<Pattern> same{Pattern(QStringLiteral("log?n"))};
        QCOMPARE(historyOf({login}, {}, same).rows().first().totals.used, 1);
    }

    void aPartialRunSaysWhy() {
        Run killed = run({});
        killed.isComplete = false;
        killed.partialReason = QStringLiteral("ended abnormally");
        const RunHistory history = historyOf({run({}), killed});
        QCOMPARE(history.partialRuns(), 1);
        QVERIFY(history.rows().at(0).isComplete);
        QCOMPARE(history.rows().at(1).partialReason, QStringLiteral("ended abnormally"));
    }

    void onlyContextsWithANameAreListed() {
        QCOMPARE(historyOf({run({})}).rows().first().contexts,
                 QStringList(QStringLiteral("login")));
    }
};

QTEST_GUILESS_MAIN(TestRunHistory)

#include "tst_runhistory.moc"
