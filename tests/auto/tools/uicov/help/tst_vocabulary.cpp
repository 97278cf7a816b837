// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/cli/helpformatter.h"
#include "commands/commandline.h"
#include "console/terminal.h"
#include "help/vocabulary.h"
#include "testlib/testcase.h"

#include <QTest>

#include <CLI/CLI.hpp>

using Uicov::Help::ValueKind;
using Uicov::Help::Verb;
using Uicov::Help::Vocabulary;
using Uicov::Help::Word;

class TestVocabulary : public TestLib::TestCase {
    Q_OBJECT

    /** A command line with one of each. */
    static std::unique_ptr<CLI::App> sample() {
        auto app = std::make_unique<CLI::App>("does things", "uicov");
        Uicov::Commands::Cli::setUsage(*app, "uicov VERB");
        app->set_help_flag("-h,--help", "Help");
        CLI::App* const make = app->add_subcommand("make", "Make a thing");
        make->group("First");
        Uicov::Commands::Cli::setUsage(*make, "uicov make [OPTIONS] FILE...");
        make->footer("About it,\nin two lines.\n\nExamples:\n  uicov make a\n  uicov make b\n\nAnd "
                     "more.");
        const auto add = [make](const char* names, const char* type) {
            return make
                ->add_option(
                    names, [](const CLI::results_t&) { return true; }, "Says so")
                ->type_name(type);
        };
        add("-o,--output", "FILE")->envname("UICOV_X")->default_str("-");
        add("--folder", "DIR");
        add("--kind", "NAME")->check(CLI::IsMember({"big", "small"}).description(""));
        add("--text", "TEXT");
        add("--hidden", "TEXT")->group("");
        make->add_flag_callback(
            "-q,--quiet", []() {}, "Quietly");
        add("FILE", "");
        CLI::App* const start = app->add_subcommand("start", "Start a program");
        start->prefix_command();
        start->group("Second");
        app->add_subcommand("secret", "Not to be seen")->group("");
        return app;
    }

    static Word option(const Verb& verb, const char* name) {
        for (const Word& word : verb.options) {
            if (word.names.contains(QLatin1String(name))) {
                return word;
            }
        }
        return {};
    }

private Q_SLOTS:
    void verbsComeInTheirOrderWithTheirGroups() {
        const auto app = sample();
        const Vocabulary vocabulary(*app);
        QCOMPARE(vocabulary.verbs().size(), 2);
        QCOMPARE(vocabulary.verbs().at(0).name, QStringLiteral("make"));
        QCOMPARE(vocabulary.verbs().at(0).group, QStringLiteral("First"));
        QCOMPARE(vocabulary.verbs().at(1).group, QStringLiteral("Second"));
        QVERIFY(vocabulary.verbs().at(1).startsProgram);
        QVERIFY(!vocabulary.verbs().at(0).startsProgram);
        QCOMPARE(vocabulary.program().description, QStringLiteral("does things"));
        QCOMPARE(vocabulary.program().usage, QStringLiteral("uicov VERB"));
    }

    void optionsAreWhatTheyAreDeclaredAs() {
        const auto app = sample();
        const Verb make = Vocabulary(*app).verbs().first();
        const Word output = option(make, "-o");
        QCOMPARE(output.names, (QStringList{QStringLiteral("-o"), QStringLiteral("--output")}));
        QCOMPARE(output.valueName, QStringLiteral("FILE"));
        QCOMPARE(output.kind, ValueKind::File);
        QCOMPARE(output.defaultValue, QStringLiteral("-"));
        QCOMPARE(output.variable, QStringLiteral("UICOV_X"));
        QCOMPARE(output.description, QStringLiteral("Says so"));
        QCOMPARE(option(make, "--folder").kind, ValueKind::Folder);
        QCOMPARE(option(make, "--kind").kind, ValueKind::Choice);
        QCOMPARE(option(make, "--kind").choices,
                 (QStringList{QStringLiteral("big"), QStringLiteral("small")}));
        QCOMPARE(option(make, "--text").kind, ValueKind::Text);
        QCOMPARE(option(make, "-q").kind, ValueKind::None);
        QVERIFY(option(make, "-q").valueName.isEmpty());
        QVERIFY(option(make, "--hidden").names.isEmpty());
        QCOMPARE(make.arguments.size(), 1);
        QCOMPARE(make.arguments.first().kind, ValueKind::File);
    }

    void theTextBelowTheOptionsIsTakenApart() {
        const auto app = sample();
        const Verb make = Vocabulary(*app).verbs().first();
        QCOMPARE(make.remarks, QStringLiteral("About it,\nin two lines."));
        QCOMPARE(make.examples, QStringLiteral("  uicov make a\n  uicov make b"));
        QCOMPARE(make.closing, QStringLiteral("And more."));
    }

    /** What the shells and the manual are written from is there for all that is real. */
    void everyRealVerbIsWhole() {
        Uicov::Console::Terminal terminal;
        Uicov::Commands::CommandLine commandLine(terminal);
        const auto app = commandLine.definitions();
        const Vocabulary vocabulary(*app);
        QVERIFY(vocabulary.verbs().size() >= 7);
        for (const Verb& verb : vocabulary.verbs()) {
            QVERIFY2(verb.group != QLatin1String("Subcommands"), qPrintable(verb.name));
            QVERIFY2(!verb.description.endsWith(QLatin1Char('.')), qPrintable(verb.name));
            QVERIFY2(verb.usage.startsWith(QStringLiteral("uicov ") + verb.name),
                     qPrintable(verb.name));
            QVERIFY2(verb.examples.startsWith(QStringLiteral("  uicov ") + verb.name),
                     qPrintable(verb.name));
            for (const Word& word : verb.options) {
                QVERIFY2(!word.description.isEmpty(),
                         qPrintable(word.names.join(QLatin1Char(' '))));
            }
            for (const Word& word : verb.arguments) {
                QVERIFY2(!word.description.isEmpty(), qPrintable(word.names.first()));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestVocabulary)
#include "tst_vocabulary.moc"
