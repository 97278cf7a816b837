// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/commandtest.h"
#include "testlib/runmaker.h"

#include <QFile>
#include <QTest>

class TestPolicies : public TestLib::CommandTest {
    Q_OBJECT

public:
    TestPolicies()
        : CommandTest(QStringLiteral(UICOV_PROGRAM)) {}

private Q_SLOTS:
    void theDataFileOfTheFolderIsTheDefault() {
        QCOMPARE(run("report"), 0);
        QVERIFY(says("TOTAL                  9     7      2       0    78%   12/15"));
        QVERIFY(QFile::rename(path(".uicov"), path("other.uicov")));
        QCOMPARE(run("report"), 1);
        QVERIFY(says("there is no data file .uicov here; make one with uicov run"));
        m_runner->setVariable(QStringLiteral("UICOV_FILE"), QStringLiteral("other.uicov"));
        QCOMPARE(run("report"), 0);
    }

    void runsOfTheTwoExtensionsAreNotOneNumber() {
        put("controls.uicov", TestLib::controlsRun(8));
        for (const char* verb : {"report", "json", "junit", "badge"}) {
            const QString words = QLatin1String(verb) + QStringLiteral(" .uicov controls.uicov");
            QCOMPARE(run(qPrintable(words)), 1);
            QVERIFY(says("[extensions-mixed]"));
            QCOMPARE(m_runner->output(), QString());
        }
        QCOMPARE(run("report --extension classic .uicov controls.uicov"), 0);
        QVERIFY(says("Elements"));
        QVERIFY(!says("Controls"));
        QCOMPARE(run("report --extension controls .uicov controls.uicov"), 0);
        QVERIFY(says("Controls used: 3 of 9"));
        QCOMPARE(run("report --extension classic controls.uicov"), 1);
        QVERIFY(says("[no-elements]"));
        QCOMPARE(run("report --extension clasic .uicov"), 1);
        QVERIFY(says("[wrong-use]"));
    }

    void aGateThatIsNotMetEndsWith2_data() {
        QTest::addColumn<QString>("options");
        QTest::addColumn<int>("status");
        QTest::newRow("total, met") << "--fail-under 77" << 0;
        QTest::newRow("total") << "--fail-under 78" << 2;
        QTest::newRow("window, met") << "--fail-under-window About=100" << 0;
        QTest::newRow("window") << "--fail-under-window Panel=90" << 2;
        QTest::newRow("no such window") << "--fail-under-window Settings=0" << 2;
        QTest::newRow("required, met") << "--require-window Pan*" << 0;
        QTest::newRow("required") << "--require-window Settings*" << 2;
        QTest::newRow("no number") << "--fail-under x" << 1;
        QTest::newRow("too large") << "--fail-under 101" << 1;
        QTest::newRow("no number of a window") << "--fail-under-window Panel=x" << 1;
        QTest::newRow("no pattern") << "--fail-under-window =3" << 1;
    }

    void aGateThatIsNotMetEndsWith2() {
        QFETCH(QString, options);
        QFETCH(int, status);
        for (const char* verb : {"report", "json", "junit", "badge"}) {
            QCOMPARE(
                m_runner->run(QStringList{QLatin1String(verb)} + options.split(QLatin1Char(' '))),
                status);
            QCOMPARE(m_runner->errors().contains(QStringLiteral("[gate-not-met]")), status == 2);
            // The report is there all the same.
            QCOMPARE(m_runner->output().isEmpty(), status == 1);
        }
    }

    void theConfigurationSetsGatesAndTheCommandLineWins() {
        configure("[gates]\nfail-under = 90\n");
        QCOMPARE(run("report"), 2);
        QCOMPARE(run("report --fail-under 50"), 0);
        QCOMPARE(run("report --no-config"), 0);
        QVERIFY(QFile::rename(path("uicov.toml"), path("mine.toml")));
        QCOMPARE(run("report"), 0);
        QCOMPARE(run("report --config mine.toml"), 2);
        QCOMPARE(run("report --config none.toml"), 1);
        QVERIFY(says("[configuration-unreadable]"));
    }

    void aWrongConfigurationReportsNothing() {
        configure("[gates]\nfail-undr = 90\n");
        QCOMPARE(run("report"), 1);
        QCOMPARE(m_runner->output(), QString());
        QVERIFY(says("uicov.toml:2:1: there is no key \"fail-undr\" in [gates]; the nearest known "
                     "one is \"fail-under\" [configuration-wrong]"));
    }

    void rulesThatDoNothingOrTooMuchAreWarnedOf() {
        configure("[[ignore]]\ntext = \"Stop\"\n[[ignore]]\ntext = \"Strat\"\n"
                  "[[ignore]]\ntype = \"CheckBox\"\n");
        QCOMPARE(run("report"), 0);
        QVERIFY(says("Elements left out by rules: 2."));
        QVERIFY(
            says("uicov.toml:3: the ignore rule text = \"Strat\" leaves out nothing that no rule "
                 "before it does; correct or remove it [ignore-rule-unused]"));
        QVERIFY(
            says("uicov.toml:5: the ignore rule type = \"CheckBox\" leaves out 1 elements, 1 of "
                 "them used; narrow it [ignore-rule-hides-use]"));
        QCOMPARE(m_runner->errors().count(QLatin1Char('\n')), 2);
    }

    void criteriaThatAskForNothingAreWarnedOf() {
        configure("[criteria]\nButton = [\"clicked\"]\nChekBox = [\"checked\"]\n"
                  "CheckBox = [\"cheked\", \"clicked\"]\n");
        QCOMPARE(run("report"), 0);
        QVERIFY(
            says("uicov.toml: [criteria] asks for \"cheked\" of CheckBox, which none announces; "
                 "the nearest that there is is \"checked\" [criterion-unused]"));
        QVERIFY(says("uicov.toml: [criteria] names ChekBox, but no element that counts is one; the "
                     "nearest that there is is \"CheckBox\" [criterion-unused]"));
        QCOMPARE(m_runner->errors().count(QLatin1Char('\n')), 2);
    }

    void aWindowPatternOfTheCommandLineReplacesTheSameOfTheFile() {
        configure("[gates.windows]\n\"Panel\" = 90\n\"About\" = 100\n");
        QCOMPARE(run("report"), 2);
        QCOMPARE(run("report --fail-under-window Panel=70"), 0);
        QCOMPARE(run("report --fail-under-window Pan*=70"), 2);
    }

    void variablesComeBeforeTheFileAndAfterTheCommandLine_data() {
        QTest::addColumn<QString>("variable");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("option");
        QTest::addColumn<QString>("ofVariable");
        QTest::addColumn<QString>("ofOption");
        QTest::newRow("precision") << "UICOV_PRECISION"
                                   << "2"
                                   << "--precision 3"
                                   << "77.78%"
                                   << "77.778%";
        QTest::newRow("fail-under") << "UICOV_FAIL_UNDER"
                                    << "99"
                                    << "--fail-under 98"
                                    << "fail-under 99 is not met"
                                    << "fail-under 98 is not met";
        QTest::newRow("contexts") << "UICOV_CONTEXTS"
                                  << "test_pump"
                                  << "--contexts test_start"
                                  << "contexts like this is counted: test_pump"
                                  << "contexts like this is counted: test_start";
    }

    void variablesComeBeforeTheFileAndAfterTheCommandLine() {
        QFETCH(QString, variable);
        QFETCH(QString, value);
        QFETCH(QString, option);
        QFETCH(QString, ofVariable);
        QFETCH(QString, ofOption);
        configure("[report]\nprecision = 1\n[gates]\nfail-under = 1\n");
        run("report");
        QVERIFY(!says(qPrintable(ofVariable)));
        m_runner->setVariable(variable, value);
        run("report");
        QVERIFY2(says(qPrintable(ofVariable)), qPrintable(m_runner->output()));
        run(qPrintable(QStringLiteral("report ") + option));
        QVERIFY2(says(qPrintable(ofOption)), qPrintable(m_runner->output()));
        QVERIFY(!says(qPrintable(ofVariable)));
        m_runner->setVariable(QStringLiteral("UICOV_SORT"), QStringLiteral("size"));
        QCOMPARE(run("report"), 1);
    }

    void twoOutputsNeedTwoPlaces_data() {
        QTest::addColumn<QString>("options");
        QTest::newRow("standard output") << "--json -";
        QTest::newRow("one file") << "--json r --junit ./r";
        QTest::newRow("the file of -o") << "-o r --markdown r";
    }

    void twoOutputsNeedTwoPlaces() {
        QFETCH(QString, options);
        QCOMPARE(run(qPrintable(QStringLiteral("report ") + options)), 1);
        QVERIFY(says("two outputs cannot go to one place; name another for one of them "
                     "[wrong-use]"));
        QCOMPARE(m_runner->output(), QString());
        QVERIFY(!QFile::exists(path("r")));
        QCOMPARE(run("report --json /dev/null --junit /dev/null"), 0);
    }

    void severalOutputsInOneCall() {
        QCOMPARE(run("report -o r.txt --json r.json --junit r.xml --badge r.svg --markdown r.md "
                     "--require-window Settings"),
                 2);
        QCOMPARE(m_runner->output(), QString());
        const auto contents = [this](const char* name) {
            QFile file(path(name));
            return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
        };
        QVERIFY(contents("r.txt").startsWith(QStringLiteral("Window ")));
        QVERIFY(contents("r.json").contains(QStringLiteral("\"uicov-report\"")));
        QVERIFY(contents("r.xml").contains(QStringLiteral("<failure ")));
        QVERIFY(contents("r.svg").startsWith(QStringLiteral("<svg ")));
        QVERIFY(contents("r.md").startsWith(QStringLiteral("## GUI coverage: 78%")));
        QCOMPARE(run("report --json none/r.json -o r2.txt"), 1);
        QVERIFY(QFile::exists(path("r2.txt"))); // the others are written
        QCOMPARE(run("report -o .uicov"), 1);
        QVERIFY(says("is a recording or data file and is not overwritten"));
    }

    void formsOfTheReport() {
        QCOMPARE(run("report --format total --precision 2"), 0);
        QCOMPARE(m_runner->output(), QStringLiteral("77.78\n"));
        QCOMPARE(run("report --skip-covered"), 0);
        QVERIFY(!says("Dialog \"About\""));
        QVERIFY(says("Windows not listed since all of them is used: 1."));
        QCOMPARE(run("report --by-context"), 0);
        QVERIFY(says("test_pump            2          2       2          2"));
        QCOMPARE(run("report --by-context --format markdown"), 0);
        QVERIFY(says("| test\\_pump | 2 | 2 | 2 | 2 |\n"));
        QCOMPARE(run("report --show-contexts"), 0);
        QVERIFY(says("used      Button \"Start\"  [test_start]"));
        QCOMPARE(run("report --show-contexts --format markdown"), 0);
        QVERIFY(says("- used: Button \"Start\" (in: test\\_start)\n"));
        QCOMPARE(run("report -m"), 0);
        QVERIFY(says("used      CheckBox \"Pump\"  (never: checked)"));
        QCOMPARE(run("report --sort -name"), 0);
        QVERIFY(m_runner->output().indexOf(QStringLiteral("Window \"Panel\"")) <
                m_runner->output().indexOf(QStringLiteral("Dialog \"About\"")));
        QCOMPARE(run("report --sort size"), 1);
        configure("[report]\nprecision = 1\nmissed = true\n");
        QCOMPARE(run("report"), 0);
        QVERIFY(says("77.8%") && says("shown     Button \"Stop\""));
        QCOMPARE(run("report --precision 0"), 0);
        QVERIFY(says(" 78%"));
    }

    void contextsCanBeChosen() {
        QCOMPARE(run("report --contexts test_pump"), 0);
        QVERIFY(says("TOTAL                  9     2      0       7    22%    2/15"));
        QCOMPARE(run("report --contexts test_pump --contexts test_s*"), 0);
        QVERIFY(says("TOTAL                  9     4"));
        QCOMPARE(run("report --contexts none*"), 1);
        QVERIFY(says("no context is like --contexts"));
    }

    void partialDataUnderStrictComesBeforeGates() {
        auto partial = TestLib::panelRun(2);
        partial.isComplete = false;
        partial.partialReason = QStringLiteral("ended abnormally");
        put("partial.uicov", partial);
        QCOMPARE(run("report partial.uicov --fail-under 99"), 2);
        QVERIFY(says("The run is partial: it ended abnormally;"));
        QCOMPARE(run("report partial.uicov --fail-under 99 --strict"), 3);
        QCOMPARE(run("report partial.uicov none.uicov"), 1);
    }
};

QTEST_GUILESS_MAIN(TestPolicies)
#include "tst_policies.moc"
