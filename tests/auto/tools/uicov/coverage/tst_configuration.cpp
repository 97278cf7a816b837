// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/configuration.h"
#include "testlib/testcase.h"

#include <QTest>

using Uicov::Coverage::Configuration;
using Uicov::Coverage::IgnoreRule;
using Uicov::Coverage::Pattern;

class TestConfiguration : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aRuleIsOneLine() {
        IgnoreRule rule;
        QCOMPARE(rule.toString(), QString());
        rule.window = Pattern(QStringLiteral("A*"));
        rule.className = Pattern(QStringLiteral("QLabel"));
        rule.why = QStringLiteral("not here");
        QCOMPARE(rule.toString(), QStringLiteral("window = \"A*\", class = \"QLabel\""));
    }

    void labelRulesApplyOneAfterTheOther() {
        Configuration configuration;
        QCOMPARE(configuration.appliedTo(QStringLiteral("Item 17")), QStringLiteral("Item 17"));
        configuration.labelRules = {
            {QRegularExpression(QStringLiteral("\\d+")), QStringLiteral("N")},
            {QRegularExpression(QStringLiteral("Item (N)")), QStringLiteral("  \\1th item ")}};
        QCOMPARE(configuration.appliedTo(QStringLiteral("Item 17")), QStringLiteral("Nth item"));
        QCOMPARE(configuration.appliedTo(QStringLiteral("OK")), QStringLiteral("OK"));
    }
};

QTEST_GUILESS_MAIN(TestConfiguration)
#include "tst_configuration.moc"
