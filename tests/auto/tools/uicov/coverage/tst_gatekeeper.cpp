// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coverageresult.h"
#include "coverage/gatekeeper.h"
#include "testlib/runmaker.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::CoverageResult;
using Uicov::Coverage::Gates;
using Uicov::Coverage::Pattern;

class TestGatekeeper : public TestLib::TestCase {
    Q_OBJECT

    static QStringList judged(const Gates& gates) {
        const Uicov::Coverage::Configuration configuration;
        CoverageResult coverage(configuration);
        coverage.add(TestLib::panelRun());
        coverage.finish();
        QStringList lines;
        const auto results = Uicov::Coverage::judgeGates(coverage, gates, 1);
        for (const auto& result : results) {
            lines.append((result.isMet ? QStringLiteral("met ") : QStringLiteral("NOT ")) +
                         result.name + QStringLiteral(": ") + result.finding);
        }
        return lines;
    }

private Q_SLOTS:
    void withoutGatesNothingIsAsked() { QCOMPARE(judged(Gates()), QStringList()); }

    void theTotalHasToReachTheLimit_data() {
        QTest::addColumn<double>("limit");
        QTest::addColumn<bool>("isMet");
        QTest::newRow("less") << 77.0 << true;
        QTest::newRow("exactly") << 700.0 / 9 << true;
        QTest::newRow("rounded it would be") << 77.8 << false;
        QTest::newRow("more") << 78.0 << false;
        QTest::newRow("nothing") << 0.0 << true;
    }

    void theTotalHasToReachTheLimit() {
        QFETCH(double, limit);
        QFETCH(bool, isMet);
        Gates gates;
        gates.failUnder = limit;
        const QStringList lines = judged(gates);
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines.at(0).startsWith(QStringLiteral("met")), isMet);
        QVERIFY2(lines.at(0).endsWith(QStringLiteral("7 of 9 elements are used, 77.8%")),
                 qPrintable(lines.at(0)));
    }

    void eachWindowThatIsMeantIsJudged() {
        Gates gates;
        gates.failUnderWindows = {qMakePair(Pattern(QStringLiteral("*")), 80.0),
                                  qMakePair(Pattern(QStringLiteral("Settings")), 10.0)};
        QCOMPARE(judged(gates),
                 QStringList({QStringLiteral("met fail-under-window *=80: Dialog \"About\": 2 of 2 "
                                             "elements are used, 100.0%"),
                              QStringLiteral("NOT fail-under-window *=80: Window \"Panel\": 5 of 7 "
                                             "elements are used, 71.4%"),
                              QStringLiteral("NOT fail-under-window Settings=10: no such window "
                                             "was opened")}));
    }

    void aWindowThatWasNeverOpenedIsMissed() {
        Gates gates;
        gates.requiredWindows = {Pattern(QStringLiteral("Abou?")),
                                 Pattern(QStringLiteral("Window \"P*")),
                                 Pattern(QStringLiteral("Settings"))};
        QCOMPARE(
            judged(gates),
            QStringList({QStringLiteral("met require-window Abou?: Dialog \"About\" was opened"),
                         QStringLiteral("met require-window Window \"P*: Window \"Panel\" was "
                                        "opened"),
                         QStringLiteral("NOT require-window Settings: no such window was "
                                        "opened")}));
    }
};

QTEST_GUILESS_MAIN(TestGatekeeper)
#include "tst_gatekeeper.moc"
