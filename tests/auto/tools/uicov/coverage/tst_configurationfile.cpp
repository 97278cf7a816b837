// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/configurationfile.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using Uicov::Base::Message;
using Uicov::Coverage::Configuration;

class TestConfigurationFile : public TestLib::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath(QStringLiteral("uicov.toml"));

    std::optional<Uicov::Base::Problem> read(const QByteArray& text, Configuration& into) {
        QFile file(m_path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
            return Uicov::Base::Problem{Message::WrongUse, QStringLiteral("test")};
        }
        file.close();
        return Uicov::Coverage::readConfiguration(m_path, into);
    }

private Q_SLOTS:
    void everythingThatCanBeSaidIsRead() {
        Configuration configuration;
        const auto problem = read("[[ignore]]\n"
                                  "window = \"About*\"\n"
                                  "why = \"only text\"\n"
                                  "[[ignore]]\n"
                                  "key = \"k\"\ntype = \"t\"\nclass = \"c\"\ntext = \"x\"\n"
                                  "[[labels]]\n"
                                  "pattern = '\\d+'\n"
                                  "replace = \"N\"\n"
                                  "[criteria]\n"
                                  "CheckBox = [\"checked\", \"clicked\"]\n"
                                  "[gates]\n"
                                  "fail-under = 80\n"
                                  "require-windows = [\"Settings*\"]\n"
                                  "fail-on = [\"lost\", \"new-missed\"]\n"
                                  "[gates.windows]\n"
                                  "\"Panel*\" = 90.5\n"
                                  "[report]\n"
                                  "precision = 2\nsort = \"cover\"\n"
                                  "skip-covered = true\nmissed = true\n"
                                  "[groups]\n"
                                  "rows = 'Row *'\ncells = ['Cell *', 'Box *']\n"
                                  "[names]\n"
                                  "prefer = [\"toolTip\", \"objectName\"]\n"
                                  "[redact]\n"
                                  "patterns = [\"account*\", \"Balance\"]\n",
                                  configuration);
        QVERIFY2(!problem, problem ? qPrintable(problem->text) : "");
        QCOMPARE(configuration.path, m_path);
        QCOMPARE(configuration.ignoreRules.size(), 2);
        QCOMPARE(configuration.ignoreRules.at(0).toString(), QStringLiteral("window = \"About*\""));
        QCOMPARE(configuration.ignoreRules.at(0).why, QStringLiteral("only text"));
        QCOMPARE(configuration.ignoreRules.at(0).line, 1);
        QCOMPARE(configuration.ignoreRules.at(1).toString(),
                 QStringLiteral("key = \"k\", type = \"t\", class = \"c\", text = \"x\""));
        QCOMPARE(configuration.appliedTo(QStringLiteral("a 12")), QStringLiteral("a N"));
        QCOMPARE(configuration.criteria.value(QStringLiteral("CheckBox")),
                 QStringList({QStringLiteral("checked"), QStringLiteral("clicked")}));
        QCOMPARE(configuration.groupOf(QStringLiteral("Row 1")), QStringLiteral("rows"));
        QCOMPARE(configuration.groupOf(QStringLiteral("Box 1")), QStringLiteral("cells"));
        QVERIFY(configuration.groupOf(QStringLiteral("Head 1")).isNull());
        QCOMPARE(configuration.preferredNames,
                 QStringList({QStringLiteral("toolTip"), QStringLiteral("objectName")}));
        QCOMPARE(*configuration.gates.failUnder, 80.0);
        QCOMPARE(configuration.gates.requiredWindows.at(0).glob(), QStringLiteral("Settings*"));
        QCOMPARE(configuration.gates.failOn.size(), 2);
        QCOMPARE(configuration.gates.failUnderWindows.at(0).first.glob(), QStringLiteral("Panel*"));
        QCOMPARE(configuration.gates.failUnderWindows.at(0).second, 90.5);
        QCOMPARE(*configuration.report.precision, 2);
        QCOMPARE(configuration.report.sort, QStringLiteral("cover"));
        QVERIFY(configuration.report.skipsCovered && configuration.report.listsMissed);
        QCOMPARE(configuration.redacted,
                 QStringList({QStringLiteral("account*"), QStringLiteral("Balance")}));
    }

    void anEmptyFileSaysNothing() {
        Configuration configuration;
        QVERIFY(!read("# nothing yet\n", configuration));
        QVERIFY(configuration.ignoreRules.isEmpty() && !configuration.gates.failUnder);
    }

    void whatIsWrongIsNamedWithItsPlace_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("place");
        QTest::addColumn<QString>("part");
        const auto row = [](const char* name, const char* text, const char* place,
                            const char* part) {
            QTest::newRow(name) << QByteArray(text) << QString::fromLatin1(place)
                                << QString::fromLatin1(part);
        };
        row("syntax", "[gates\n", ":1:", "");
        row("section", "[gate]\n",
            ":1:", "no section \"gate\"; the nearest known one is \"gates\"");
        row("key", "[gates]\nfail_under = 3\n",
            ":2:1: ", "no key \"fail_under\" in [gates]; the nearest known one is \"fail-under\"");
        row("key of a rule", "[[ignore]]\nwindov = \"x\"\n", ":2:1: ", "\"window\"");
        row("no criterion", "[criteria]\nCommand = [\"way=\"]\n", ":2:11: ", "is no criterion");
        row("no kind of name", "[names]\nprefer = [\"tooltip\"]\n",
            ":2:11: ", "the nearest one is \"toolTip\"");
        row("group without a pattern", "[groups]\nrows = []\n", ":2:8: ", "needs a pattern");
        row("text for a number", "[gates]\nfail-under = \"80\"\n", ":2:14: ", "from 0 to 100");
        row("too much", "[gates]\nfail-under = 101\n", ":2:14: ", "from 0 to 100");
        row("number for a text", "[[ignore]]\nkey = 3\n", ":2:7: ", "quotation marks");
        row("text for a flag", "[report]\nmissed = \"yes\"\n", ":2:", "true or false");
        row("fraction", "[report]\nprecision = 1.5\n", ":2:", "whole number");
        row("negative", "[report]\nprecision = -1\n", ":2:", "whole number");
        row("sort", "[report]\nsort = \"covers\"\n", ":2:", "the nearest one is \"cover\"");
        row("kind", "[gates]\nfail-on = [\"lots\"]\n", ":2:", "the nearest one is \"lost\"");
        row("no list", "[gates]\nfail-on = \"lost\"\n", ":2:", "has to be a list");
        row("empty rule", "[[ignore]]\nwhy = \"x\"\n", ":1:", "would hide everything");
        row("no table of rules", "ignore = 3\n", ":1:", "has to be a list");
        row("no rule", "ignore = [3]\n", ":1:", "has to be a table");
        row("no pattern", "[[labels]]\nreplace = \"x\"\n", ":1:", "needs a pattern");
        row("no TOML", "[gates]\nfail under 80\n",
            ":2:", "this is no TOML: fail under 80; a line is [SECTION] or KEY = VALUE");
        row("text without its end", "[report]\nsort = \"cover\n",
            ":2:", "this is no TOML: sort = \"cover; a line is");
        row("key twice", "[gates]\nfail-under = 1\nfail-under = 2\n", ":3:", "each key once");
        row("bad expression", "[[labels]]\npattern = \"(\"\n", ":2:", "no regular expression");
        row("no events", "[criteria]\nCheckBox = []\n", ":2:", "name the events");
        row("criteria", "criteria = 3\n", ":1:", "has to be a table");
        row("windows", "[gates]\nwindows = 3\n", ":2:", "has to be a table");
    }

    void whatIsWrongIsNamedWithItsPlace() {
        QFETCH(QByteArray, text);
        QFETCH(QString, place);
        QFETCH(QString, part);
        Configuration configuration;
        const auto problem = read(text, configuration);
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::ConfigurationWrong);
        QVERIFY2(problem->text.startsWith(m_path + place), qPrintable(problem->text));
        QVERIFY2(problem->text.contains(part), qPrintable(problem->text));
        QVERIFY(!problem->text.contains(QLatin1Char('\n')));
    }

    void aMissingFileIsAProblem() {
        Configuration configuration;
        const auto problem = Uicov::Coverage::readConfiguration(
            m_folder.filePath(QStringLiteral("none")), configuration);
        QVERIFY(problem);
        QCOMPARE(problem->message, Message::ConfigurationUnreadable);
    }
};

QTEST_GUILESS_MAIN(TestConfigurationFile)
#include "tst_configurationfile.moc"
