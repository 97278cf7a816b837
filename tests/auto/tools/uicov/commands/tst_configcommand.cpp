// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/commandtest.h"

#include <QRegularExpression>
#include <QTest>

class TestConfigCommand : public TestLib::CommandTest {
    Q_OBJECT

    /** What stands behind the setting, with single blanks. */
    QString valueOf(const char* setting) const {
        const QStringList lines = m_runner->output().split(QLatin1Char('\n'));
        for (const QString& line : lines) {
            const QString text = line.simplified();
            if (text.startsWith(QLatin1String(setting) + QLatin1Char(' '))) {
                return text.mid(static_cast<int>(qstrlen(setting)) + 1);
            }
        }
        return {};
    }

public:
    TestConfigCommand()
        : CommandTest(QStringLiteral(UICOV_PROGRAM)) {}

private Q_SLOTS:
    void withoutAFileAllIsDefault() {
        QCOMPARE(run("config"), 0);
        QVERIFY(says("Configuration: none\n"));
        QCOMPARE(valueOf("--toolkit"), QStringLiteral("both default"));
        QCOMPARE(valueOf("--strict"), QStringLiteral("off default"));
        QCOMPARE(valueOf("--precision"), QStringLiteral("0 default"));
        QCOMPARE(valueOf("--output"), QStringLiteral(".uicov default"));
        QCOMPARE(valueOf("report.missed"), QStringLiteral("false default"));
    }

    void eachValueSaysWhereItComesFrom() {
        configure("[report]\nprecision = 2\nmissed = true\n\n[[ignore]]\ntype = \"Link\"\n"
                  "\n[gates]\nfail-under = 60\nfail-on = [\"lost\"]\n"
                  "[gates.windows]\n\"Set*\" = 80\n");
        m_runner->setVariable(QStringLiteral("UICOV_TOOLKIT"), QStringLiteral("quick"));
        m_runner->setVariable(QStringLiteral("UICOV_FAIL_UNDER"), QStringLiteral("70"));
        QCOMPARE(run("config"), 0);
        QVERIFY(says("Configuration: uicov.toml\n"));
        QCOMPARE(valueOf("--toolkit"), QStringLiteral("quick UICOV_TOOLKIT"));
        QCOMPARE(valueOf("--precision"), QStringLiteral("2 uicov.toml:2"));
        QCOMPARE(valueOf("report.missed"), QStringLiteral("true uicov.toml:3"));
        QCOMPARE(valueOf("--fail-under"), QStringLiteral("70 UICOV_FAIL_UNDER"));
        QVERIFY(valueOf("ignore[1]").contains(QStringLiteral("Link")));
        QVERIFY(valueOf("ignore[1]").endsWith(QStringLiteral(" uicov.toml:5")));
        QVERIFY(valueOf("gates.fail-on").contains(QStringLiteral("lost")));
        QCOMPARE(valueOf("gates.windows.Set*"), QStringLiteral("80 uicov.toml:12"));
        QCOMPARE(run("config --no-config"), 0);
        QCOMPARE(valueOf("--precision"), QStringLiteral("0 default"));
    }

    void aWrongFileIsToldAsEverywhere() {
        configure("[gates]\nfail_under = 60\n");
        QCOMPARE(run("config"), 1);
        QVERIFY(says("[configuration-wrong]"));
        QCOMPARE(run("config --config none.toml"), 1);
        QVERIFY(says("[configuration-unreadable]"));
        QCOMPARE(run("config --no-config more"), 1);
        QVERIFY(says("[wrong-use]"));
    }
};

QTEST_GUILESS_MAIN(TestConfigCommand)
#include "tst_configcommand.moc"
