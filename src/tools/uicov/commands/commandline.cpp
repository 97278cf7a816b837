// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/commandline.h"

#include "commands/badgecommand.h"
#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "commands/combinecommand.h"
#include "commands/completioncommand.h"
#include "commands/configcommand.h"
#include "commands/diffcommand.h"
#include "commands/doctorcommand.h"
#include "commands/dumpcommand.h"
#include "commands/erasecommand.h"
#include "commands/explaincommand.h"
#include "commands/helpcommand.h"
#include "commands/htmlcommand.h"
#include "commands/jsoncommand.h"
#include "commands/junitcommand.h"
#include "commands/markcommand.h"
#include "commands/parseproblem.h"
#include "commands/reportcommand.h"
#include "commands/runcommand.h"
#include "console/terminal.h"

#include <algorithm>
#include <iterator>

namespace Uicov::Commands {

using Base::Message;
using Cli::Failed;
using Cli::setUsage;

namespace {

constexpr char description[] =
    "Shows which parts of a Qt 5 application's user interface were used.";
constexpr char examples[] = R"(Examples:
  uicov doctor ./panel          can this application be recorded here?
  uicov run -- ./panel --demo   run it and record what is used
  uicov report -m               what was used, window by window, and what was not

Exit codes: 0 done; 1 wrong use, or input or output failed; 2 a limit that was asked for is not
kept; 3 the data is partial or damaged and --strict was given. "uicov run" ends with the
application's status. Colour is for terminals only; NO_COLOR is obeyed.)";

Console::Terminal::Colour colourOf(const std::string& name) {
    if (name == "always") {
        return Console::Terminal::Colour::Always;
    }
    return name == "never" ? Console::Terminal::Colour::Never
                           : Console::Terminal::Colour::Automatic;
}

} // namespace

CommandLine::CommandLine(Console::Terminal& terminal)
    : m_terminal(terminal) {
    beginGroup("Recording");
    m_commands.push_back(std::make_unique<RunCommand>());
    m_commands.push_back(std::make_unique<MarkCommand>());
    m_commands.push_back(std::make_unique<DoctorCommand>());
    beginGroup("Data files");
    m_commands.push_back(std::make_unique<CombineCommand>());
    m_commands.push_back(std::make_unique<EraseCommand>());
    m_commands.push_back(std::make_unique<DumpCommand>());
    beginGroup("Answers");
    m_commands.push_back(std::make_unique<ReportCommand>());
    m_commands.push_back(std::make_unique<HtmlCommand>());
    m_commands.push_back(std::make_unique<JsonCommand>());
    m_commands.push_back(std::make_unique<JUnitCommand>());
    m_commands.push_back(std::make_unique<BadgeCommand>());
    m_commands.push_back(std::make_unique<DiffCommand>());
    m_commands.push_back(std::make_unique<ExplainCommand>());
    beginGroup("This command");
    m_commands.push_back(std::make_unique<ConfigCommand>());
    m_commands.push_back(std::make_unique<HelpCommand>());
    m_commands.push_back(std::make_unique<CompletionCommand>());
}

CommandLine::~CommandLine() = default;

void CommandLine::beginGroup(const char* name) {
    m_groups.push_back({m_commands.size(), name});
}

std::unique_ptr<CLI::App> CommandLine::definitions() {
    auto app = std::make_unique<CLI::App>(description, "uicov");
    setUsage(*app, "uicov [OPTIONS] VERB [OPTIONS] ...");
    app->set_version_flag("--version", "uicov " UICOV_VERSION, "Print the version and exit");
    app->set_help_flag("-h,--help", "Print this help and exit");
    app->add_option("--color", m_colour, "When to use colour: auto, always or never")
        ->type_name("WHEN")
        ->envname("UICOV_COLOR")
        ->check(CLI::IsMember({"auto", "always", "never"}).description(""))
        ->capture_default_str();
    app->footer(examples);
    app->require_subcommand(1);
    m_verbs.clear();
    auto group = m_groups.cbegin();
    for (std::size_t i = 0; i < m_commands.size(); ++i) {
        while (std::next(group) != m_groups.cend() && std::next(group)->firstCommand <= i) {
            ++group;
        }
        m_verbs.push_back(m_commands[i]->declare(*app));
        m_verbs.back()->group(group->name);
    }
    return app;
}

QStringList CommandLine::verbNames() const {
    QStringList names;
    for (const CLI::App* verb : m_verbs) {
        names.append(QString::fromStdString(verb->get_name()));
    }
    return names;
}

int CommandLine::run(const std::vector<std::string>& arguments) {
    const std::unique_ptr<CLI::App> app = definitions();
    const QString choice = verbNames().join(QStringLiteral(", ")) + QStringLiteral("; see uicov "
                                                                                   "--help");
    if (arguments.empty()) {
        m_terminal.error({Message::WrongUse, QStringLiteral("no verb given: ") + choice});
        return Failed;
    }
    const QString verb = QString::fromLocal8Bit(arguments.front().c_str());
    if (!verb.startsWith(QLatin1Char('-')) && !verbNames().contains(verb)) {
        m_terminal.error(unknownVerb(verb, *app));
        return Failed;
    }
    // What stands behind the first "--" is not ours to read, whatever it looks like.
    const auto separator = std::find(arguments.begin(), arguments.end(), "--");
    std::vector<std::string> own(arguments.begin(), separator);
    std::reverse(own.begin(), own.end()); // the parser takes them from the back
    try {
        app->parse(own);
    } catch (const CLI::Success& success) {
        return app->exit(success);
    } catch (const CLI::ParseError& error) {
        m_terminal.error(parseProblem(error, *app));
        return Failed;
    }
    Console::Terminal::setColour(colourOf(m_colour));
    for (std::size_t i = 0; i < m_verbs.size(); ++i) {
        if (m_verbs[i]->parsed()) {
            const bool hasLiteral = separator != arguments.end();
            const std::vector<std::string> literal(hasLiteral ? separator + 1 : separator,
                                                   arguments.end());
            m_commands[i]->setArguments(m_verbs[i]->remaining(), hasLiteral ? &literal : nullptr);
            return m_commands[i]->run(m_terminal);
        }
    }
    return Failed;
}

} // namespace Uicov::Commands
