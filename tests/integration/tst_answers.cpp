// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "controlsrun.h"
#include "coverage/coverageresult.h"
#include "report/textreport.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::Configuration;
using Uicov::Coverage::CoverageResult;

/** What a person reads about whole programs, down to the last line. */
class TestAnswers : public TestLib::TestCase {
    Q_OBJECT

    /** The rows of "uicov report -m --show-contexts" and the sentence with both numbers. */
    static QStringList answerTo(const ControlsRun& run) {
        const Configuration configuration;
        CoverageResult coverage(configuration);
        coverage.add(run.run());
        coverage.finish();
        Uicov::Report::TextReport report(coverage.tree());
        report.setListsMissed(true);
        report.setListsContexts(true);
        const QString text = report.toString();
        const QStringList parts = text.split(QRegularExpression(QStringLiteral("\n-+\n")));
        return parts.value(1).simplified().isEmpty()
                   ? QStringList()
                   : parts.value(1).split(QLatin1Char('\n')) +
                         text.split(QLatin1Char('\n')).filter(QStringLiteral("Views seen:"));
    }

private Q_SLOTS:
    void theAnswerIsTrue_data() {
        QTest::addColumn<QString>("function");
        QTest::addColumn<QStringList>("answer");
        QStringList menus{
            QStringLiteral("Window \"Editor\"   1/11       300     0     0     300     0%")};
        for (int i = 1; i <= 10; ++i) {
            menus.append(
                QStringLiteral("    unseen    Menu \"Menu %1\" (30 controls): never opened")
                    .arg(i));
        }
        menus.append(QStringLiteral("Views seen: 1 of 11. Controls used: 0 of 300 (0%)."));
        QTest::newRow("ten closed menus of 300 actions") << QStringLiteral("closedMenus") << menus;
        QTest::newRow("two of six pages visited")
            << QStringLiteral("stackOfPages")
            << QStringList{
                   QStringLiteral("Window \"Editor\"    3/7         7     2     1       4    29%"),
                   QStringLiteral("    seen      Page \"page1\" > CheckBox \"Box 1\""),
                   QStringLiteral("    unseen    Page \"page3\" (1 control): never opened"),
                   QStringLiteral("    unseen    Page \"page4\" (1 control): never opened"),
                   QStringLiteral("    unseen    Page \"page5\" (1 control): never opened"),
                   QStringLiteral("    unseen    Page \"page6\" (1 control): never opened"),
                   QStringLiteral("    used      Button \"Next\"  [AnsweredProgram::stackOfPages]"),
                   QStringLiteral("    used      Page \"page2\" > CheckBox \"Box 2\"  "
                                  "[AnsweredProgram::stackOfPages]"),
                   QStringLiteral("Views seen: 3 of 7. Controls used: 2 of 7 (29%).")};
        QTest::newRow("a program that operates itself")
            << QStringLiteral("operatesItself")
            << QStringList{
                   QStringLiteral("Window \"Editor\"    1/1         3     0     3       0     0%"),
                   QStringLiteral("    seen      Button \"Apply\""),
                   QStringLiteral("    seen      CheckBox \"Remember\""),
                   QStringLiteral("    seen      TextInput \"Name\""),
                   QStringLiteral("Views seen: 1 of 1. Controls used: 0 of 3 (0%).")};
        QTest::newRow("hidden and disabled actions")
            << QStringLiteral("hiddenAndDisabledActions")
            << QStringList{
                   QStringLiteral("Window \"Editor\"    2/2         2     1     1       0    50%"),
                   QStringLiteral("    seen      Menu \"File\" > Command \"Other\"  (ways: menu)"),
                   QStringLiteral(
                       "    used      Menu \"File\" > Command \"Plain\"  (ways: menu; used: menu)  "
                       "[AnsweredProgram::hiddenAndDisabledActions]"),
                   QStringLiteral("Views seen: 2 of 2. Controls used: 1 of 2 (50%).")};
    }

    void theAnswerIsTrue() {
        QFETCH(QString, function);
        QFETCH(QStringList, answer);
        const ControlsRun run(QStringLiteral(ANSWERED_PROGRAM),
                              {QStringLiteral("-silent"), function});
        QVERIFY2(run.problem().isEmpty(), qPrintable(run.problem()));
        const QStringList actual = answerTo(run);
        // Longer than what QCOMPARE() would show.
        QVERIFY2(actual == answer, qPrintable(actual.join(QLatin1Char('\n'))));
    }

    void aPageThatIsVisitedFiveTimesIsToldOnce() {
        const ControlsRun run(QStringLiteral(VISITED_PAGES), {QStringLiteral("-silent")});
        QVERIFY2(run.problem().isEmpty(), qPrintable(run.problem()));
        const QStringList answer = answerTo(run);
        for (const char* box : {"Red", "Green", "Blue"}) {
            QCOMPARE(
                answer.filter(QStringLiteral("CheckBox \"%1\"").arg(QLatin1String(box))).size(), 1);
        }
        QCOMPARE(answer.filter(QStringLiteral("  used ")).filter(QStringLiteral("CheckBox")).size(),
                 1);
    }
};

QTEST_GUILESS_MAIN(TestAnswers)
#include "tst_answers.moc"
