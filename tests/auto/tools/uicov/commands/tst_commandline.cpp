// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/commandrunner.h"
#include "testlib/testcase.h"

#include <QRegularExpression>
#include <QTest>

using TestLib::CommandRunner;

class TestCommandLine : public TestLib::TestCase {
    Q_OBJECT

    CommandRunner m_runner{QStringLiteral(UICOV_PROGRAM)};

private Q_SLOTS:
    void versionAndHelpGoToStandardOutput() {
        QCOMPARE(m_runner.run({QStringLiteral("--version")}), 0);
        QVERIFY(m_runner.output().startsWith(QStringLiteral("uicov ")));
        QCOMPARE(m_runner.run({QStringLiteral("--help")}), 0);
        QVERIFY(m_runner.output().contains(QStringLiteral("Examples:")));
        QCOMPARE(m_runner.errors(), QString());
    }

    void everyVerbHasHelpWithExamples_data() {
        QTest::addColumn<QString>("verb");
        QCOMPARE(m_runner.run({QStringLiteral("--help")}), 0);
        const QRegularExpression line(QStringLiteral("^  ([a-z]+)  +[A-Z]"),
                                      QRegularExpression::MultilineOption);
        auto it = line.globalMatch(m_runner.output());
        while (it.hasNext()) {
            const QString verb = it.next().captured(1);
            QTest::newRow(qPrintable(verb)) << verb;
        }
    }

    void everyVerbHasHelpWithExamples() {
        QFETCH(QString, verb);
        QCOMPARE(m_runner.run({verb, QStringLiteral("--help")}), 0);
        QVERIFY(m_runner.output().contains(QStringLiteral("Usage: uicov ") + verb));
        QVERIFY(m_runner.output().contains(QStringLiteral("Examples:\n  uicov ") + verb));
        const QStringList lines = m_runner.output().split(QLatin1Char('\n'));
        for (const QString& line : lines) {
            QVERIFY2(line.size() <= 100, qPrintable(line));
        }
    }

    void helpIsAVerbToo() {
        for (const char* verb : {"report", "diff", "help"}) {
            QCOMPARE(m_runner.run({QString::fromLatin1(verb), QStringLiteral("--help")}), 0);
            const QString help = m_runner.output();
            QCOMPARE(m_runner.run({QStringLiteral("help"), QString::fromLatin1(verb)}), 0);
            QCOMPARE(m_runner.output(), help);
        }
        QCOMPARE(m_runner.run({QStringLiteral("--help")}), 0);
        const QString help = m_runner.output();
        QCOMPARE(m_runner.run({QStringLiteral("help")}), 0);
        QCOMPARE(m_runner.output(), help);
    }

    void theParserNeverSpeaksForItself() {
        for (const char* words : {"report --missed=some", "report -o", "report --precision x",
                                  "report --format", "report --strict=maybe"}) {
            QCOMPARE(m_runner.run(QString::fromLatin1(words).split(QLatin1Char(' '))), 1);
            for (const char* theirs : {"required", "Could not", "not in {", "Should be", "were not",
                                       "was not", "disallowed", "TEXT"}) {
                QVERIFY2(!m_runner.errors().contains(QLatin1String(theirs)),
                         qPrintable(m_runner.errors()));
            }
        }
    }

    void theVerbsComeInGroups() {
        QCOMPARE(m_runner.run({QStringLiteral("--help")}), 0);
        for (const char* part : {"\nRecording:\n  run  ", "\nData files:\n  combine  ",
                                 "\nAnswers:\n  report  ", "\nThis command:\n  config  "}) {
            QVERIFY2(m_runner.output().contains(QLatin1String(part)), part);
        }
    }

    void colourCanBeChosen() {
        const QStringList report{QStringLiteral("report"), QStringLiteral("none.uirec")};
        const QString option = QStringLiteral("--color");
        QCOMPARE(m_runner.run(QStringList{option, QStringLiteral("always")} + report), 1);
        QVERIFY(m_runner.errors().contains(QStringLiteral("\x1b[1;31merror:")));
        QCOMPARE(m_runner.run(QStringList{option, QStringLiteral("auto")} + report), 1);
        QVERIFY(!m_runner.errors().contains(QChar(0x1b)));
        CommandRunner runner(QStringLiteral(UICOV_PROGRAM));
        runner.setVariable(QStringLiteral("UICOV_COLOR"), QStringLiteral("always"));
        QCOMPARE(runner.run(report), 1);
        QVERIFY(runner.errors().contains(QChar(0x1b)));
        QCOMPARE(runner.run(QStringList{option, QStringLiteral("never")} + report), 1);
        QVERIFY(!runner.errors().contains(QChar(0x1b)));
        QCOMPARE(runner.run(QStringList{option, QStringLiteral("pink")} + report), 1);
        QVERIFY(runner.errors().endsWith(QStringLiteral("[wrong-use]\n")));
    }

    void theVariablesStandBesideTheirOptions() {
        QCOMPARE(m_runner.run({QStringLiteral("run"), QStringLiteral("--help")}), 0);
        for (const char* name : {"[UICOV_TOOLKIT]", "[UICOV_SCREENSHOTS]", "[UICOV_LIBDIR]"}) {
            QVERIFY2(m_runner.output().contains(QLatin1String(name)), name);
        }
    }

    void wrongUseIsOneLineAndExitCode1_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("part");
        const auto words = [](const char* text) {
            return QString::fromLatin1(text).split(QLatin1Char(' '));
        };
        QTest::newRow("nothing") << QStringList() << "no verb given";
        QTest::newRow("unknown verb")
            << words("reprot x") << "no verb reprot; the nearest is report; see uicov --help";
        QTest::newRow("unknown option")
            << words("report --mised x")
            << "report knows no option --mised; the nearest is --missed";
        QTest::newRow("unknown option before the verb")
            << words("--mised report x") << "uicov knows no option --mised; see";
        QTest::newRow("no key") << words("explain") << "the key of an element";
        QTest::newRow("unknown format") << words("dump --format xml a")
                                        << "--format takes text or json, not xml; see uicov dump";
        QTest::newRow("no application") << words("run") << "the application to start";
        QTest::newRow("no application behind the dashes") << words("run --") << "the application";
        QTest::newRow("unknown option of run") << words("run --scrennshots ./x") << "--scrennshots";
        QTest::newRow("unknown toolkit") << words("run --toolkit gtk -- ./x")
                                         << "--toolkit takes widgets, quick or both, not gtk";
        QTest::newRow("option without its value")
            << words("report -o") << "--output needs a FILE behind it";
        QTest::newRow("number too high") << words("report --precision 9")
                                         << "--precision takes a whole number from 0 to 6, not 9";
        QTest::newRow("no whole number")
            << words("report --precision 1.5") << "a whole number from 0 to 6, not 1.5";
        QTest::newRow("no number") << words("html --max-size big")
                                   << "--max-size takes a number that is at least 0, not big";
        QTest::newRow("percent") << words("report --fail-under 120")
                                 << "--fail-under takes a number from 0 to 100, not 120";
        QTest::newRow("given twice")
            << words("report --format text --format total") << "--format is given more than once";
        QTest::newRow("value of a flag") << words("report --missed=some") << "--missed";
        QTest::newRow("nearest choice")
            << words("report --format markdwn") << "not markdwn; the nearest is markdown";
        QTest::newRow("help of no verb")
            << words("help reprt") << "no verb reprt; the nearest is report";
        QTest::newRow("help of two verbs") << words("help report html") << "help: html is one argument too many";
    }

    void wrongUseIsOneLineAndExitCode1() {
        QFETCH(QStringList, arguments);
        QFETCH(QString, part);
        QCOMPARE(m_runner.run(arguments), 1);
        QCOMPARE(m_runner.output(), QString());
        QVERIFY2(m_runner.errors().contains(part), qPrintable(m_runner.errors()));
        QVERIFY2(m_runner.errors().endsWith(QStringLiteral("[wrong-use]\n")),
                 qPrintable(m_runner.errors()));
        QCOMPARE(m_runner.errors().count(QLatin1Char('\n')), 1);
    }

    void aWrongValueInAVariableIsToldToo() {
        CommandRunner runner(QStringLiteral(UICOV_PROGRAM));
        runner.setVariable(QStringLiteral("UICOV_TOOLKIT"), QStringLiteral("gtk"));
        QCOMPARE(
            runner.run({QStringLiteral("run"), QStringLiteral("--"), QStringLiteral("/bin/true")}),
            1);
        QVERIFY2(runner.errors().contains(QStringLiteral(
                     "--toolkit (UICOV_TOOLKIT) takes widgets, quick or both, not gtk")),
                 qPrintable(runner.errors()));
        QVERIFY(runner.errors().endsWith(QStringLiteral("[wrong-use]\n")));
    }

    void aFileCanBeginWithADash() {
        QCOMPARE(
            m_runner.run({QStringLiteral("report"), QStringLiteral("--"), QStringLiteral("-x")}),
            1);
        QVERIFY(m_runner.errors().contains(QStringLiteral("-x: there is no such file")));
    }
};

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_commandline.moc"
