// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coverageresult.h"
#include "report/timelinejson.h"
#include "report/timelinereport.h"
#include "testlib/runmaker.h"
#include "testlib/testcase.h"

#include <QJsonObject>
#include <QTest>

using Uicov::Coverage::Configuration;
using Uicov::Coverage::CoverageResult;
using Uicov::Report::timelineJson;
using Uicov::Report::TimelineReport;
using Uicov::Runs::Run;

class TestTimeline : public TestLib::TestCase {
    Q_OBJECT

    Configuration m_configuration;

    /** Gives each element's uses a time: the later in the run's list the earlier. */
    static Run timed(Run run, qint64 start) {
        qint64 time = start;
        for (auto it = run.elements.rbegin(); it != run.elements.rend(); ++it) {
            for (auto& hit : it->hits) {
                hit.first = time;
                hit.last = time + hit.count - 1;
                time += 1000;
            }
        }
        return run;
    }

    static QStringList lines(const CoverageResult& coverage) {
        return TimelineReport(coverage).toText().split(QLatin1Char('\n'));
    }

private Q_SLOTS:
    void cleanup() { m_configuration = Configuration(); }

    void usesAndViewsComeInTheOrderOfTimeWithTheirContexts() {
        CoverageResult coverage(m_configuration);
        coverage.add(timed(TestLib::controlsRun(), 100));
        coverage.finish();
        QCOMPARE(lines(coverage),
                 (QStringList{
                     QStringLiteral("panel, started 2024-01-01T00:00:01Z, run ") +
                         TestLib::controlsRun().uuid.left(8),
                     QStringLiteral("     0.100  seen       Window \"Panel\" > Page \"General\""),
                     QStringLiteral("     1.100  clicked    Window \"Panel\" > Item \"rows\"  "
                                    "(in test_start)"),
                     QStringLiteral("     2.100  triggered  Window \"Panel\" > Command \"Print\"  "
                                    "(in test_print)"),
                     QStringLiteral("     3.100  clicked    Window \"Panel\" > Button "
                                    "\"startButton\"  (2 times until 3.101, in test_start)"),
                     QStringLiteral("     4.100  seen       Window \"Panel\""), QString()}));
        const QJsonObject first = timelineJson(coverage).at(0).toObject();
        QCOMPARE(first.value(QStringLiteral("first_ms")).toInt(), 100);
        QCOMPARE(first.value(QStringLiteral("event")).toString(), QStringLiteral("seen"));
        QCOMPARE(first.value(QStringLiteral("run")).toString(), TestLib::controlsRun().uuid);
    }

    void membersOfAGroupAreOneEntry() {
        Run run = TestLib::controlsRun();
        int number = 0;
        for (auto& element : run.elements) {
            if (element.type == QLatin1String("Item")) {
                element.hits = {{QStringLiteral("clicked"), 0, 1, 500 - number, 600 + number}};
                ++number;
            }
        }
        CoverageResult coverage(m_configuration);
        coverage.add(run);
        coverage.finish();
        const auto& entries = coverage.timeline().entries();
        QCOMPARE(entries.size(), std::size_t{1});
        QCOMPARE(entries.front().count, qint64{3});
        QCOMPARE(entries.front().first, qint64{498});
        QCOMPARE(entries.front().last, qint64{602});
    }

    void runsComeOneAfterTheOther() {
        CoverageResult coverage(m_configuration);
        coverage.add(timed(TestLib::controlsRun(1), 5000));
        coverage.add(timed(TestLib::controlsRun(2), 0));
        coverage.finish();
        const QString text = TimelineReport(coverage).toText();
        QCOMPARE(text.count(QStringLiteral("panel, started")), 2);
        QVERIFY(text.indexOf(QStringLiteral("     5.000")) <
                text.indexOf(QStringLiteral("     0.000")));
    }

    void whatHasNoTimeIsCounted() {
        CoverageResult coverage(m_configuration);
        coverage.add(TestLib::controlsRun());
        coverage.finish();
        QCOMPARE(TimelineReport(coverage).toText(),
                 QStringLiteral("Nothing was used or seen at a time that is known.\n\n"
                                "Without a time: 5; data files of older versions have none.\n"));
        QVERIFY(timelineJson(coverage).isEmpty());
    }

    void onlyContextsThatCountAreTold() {
        CoverageResult coverage(m_configuration,
                                {Uicov::Coverage::Pattern(QStringLiteral("test_print"))});
        coverage.add(timed(TestLib::controlsRun(), 0));
        coverage.finish();
        const QString text = TimelineReport(coverage).toText();
        QVERIFY(text.contains(QStringLiteral("Print")));
        QVERIFY(!text.contains(QStringLiteral("startButton")));
    }

    void whatRulesLeaveOutIsLeftOut() {
        Uicov::Coverage::IgnoreRule rule;
        rule.key = Uicov::Coverage::Pattern(QStringLiteral("*startButton*"));
        m_configuration.ignoreRules.append(rule);
        CoverageResult coverage(m_configuration);
        coverage.add(timed(TestLib::controlsRun(), 0));
        coverage.finish();
        QVERIFY(!TimelineReport(coverage).toText().contains(QStringLiteral("startButton")));
        QVERIFY(TimelineReport(coverage).toMarkdown().contains(QStringLiteral("| 2.000 | ")));
    }
};

QTEST_GUILESS_MAIN(TestTimeline)
#include "tst_timeline.moc"
