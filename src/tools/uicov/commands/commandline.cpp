#include "commands/commandline.h"

#include "commands/combinecommand.h"
#include "commands/dumpcommand.h"
#include "commands/erasecommand.h"
#include "commands/exitcode.h"
#include "commands/helpformatter.h"
#include "commands/htmlcommand.h"
#include "commands/reportcommand.h"
#include "commands/runcommand.h"
#include "console/terminal.h"

#include <algorithm>

namespace Uicov::Commands {

using Console::Message;

namespace {

constexpr char description[] =
    "Shows which parts of a Qt 5 application's user interface were used.";
constexpr char examples[] = R"(Examples:
  uicov run -- ./panel --demo       run an application and record what is used
  uicov report panel.uirec -m       what was used, window by window, and what was not
  uicov dump panel.uirec            every recorded message as one line

Exit codes: 0 done; 1 wrong use, or input or output failed; 3 the data is partial
or damaged and --strict was given. "uicov run" ends with the application's status.)";

/** A line for people out of what the parser says, which may have several. */
QString oneLine(const std::string& text) {
    return QString::fromStdString(text).simplified();
}

} // namespace

CommandLine::CommandLine(Console::Terminal& terminal)
    : m_terminal(terminal) {
    m_commands.push_back(std::make_unique<RunCommand>());
    m_commands.push_back(std::make_unique<CombineCommand>());
    m_commands.push_back(std::make_unique<ReportCommand>());
    m_commands.push_back(std::make_unique<HtmlCommand>());
    m_commands.push_back(std::make_unique<DumpCommand>());
    m_commands.push_back(std::make_unique<EraseCommand>());
}

CommandLine::~CommandLine() = default;

int CommandLine::run(const std::vector<std::string>& arguments) {
    CLI::App app(description, "uicov");
    setUsage(app, "uicov VERB [OPTIONS] ...");
    app.set_version_flag("--version", "uicov " UICOV_VERSION, "Print the version and exit");
    app.set_help_flag("-h,--help", "Print this help and exit");
    app.footer(examples);
    app.require_subcommand(1);
    std::vector<CLI::App*> verbs;
    for (const auto& command : m_commands) {
        verbs.push_back(command->declare(app));
    }

    if (arguments.empty()) {
        m_terminal.error({Message::WrongUse,
                          QStringLiteral("no verb given: run, report or dump; see uicov --help")});
        return Failed;
    }
    const std::string& verb = arguments.front();
    if (verb.compare(0, 1, "-") != 0 &&
        std::none_of(verbs.begin(), verbs.end(),
                     [&](const CLI::App* known) { return known->get_name() == verb; })) {
        m_terminal.error({Message::WrongUse,
                          QStringLiteral("there is no verb ") + QString::fromStdString(verb) +
                              QStringLiteral(", only run, report and dump; see uicov --help")});
        return Failed;
    }
    // What stands behind the first "--" is not ours to read, whatever it looks like.
    const auto separator = std::find(arguments.begin(), arguments.end(), "--");
    std::vector<std::string> own(arguments.begin(), separator);
    std::reverse(own.begin(), own.end()); // the parser takes them from the back
    try {
        app.parse(own);
    } catch (const CLI::Success& success) {
        return app.exit(success);
    } catch (const CLI::ParseError& error) {
        m_terminal.error(
            {Message::WrongUse, oneLine(error.what()) + QStringLiteral("; see uicov --help")});
        return Failed;
    }
    for (std::size_t i = 0; i < verbs.size(); ++i) {
        if (verbs[i]->parsed()) {
            const bool hasLiteral = separator != arguments.end();
            const std::vector<std::string> literal(hasLiteral ? separator + 1 : separator,
                                                   arguments.end());
            m_commands[i]->setArguments(verbs[i]->remaining(), hasLiteral ? &literal : nullptr);
            return m_commands[i]->run(m_terminal);
        }
    }
    return Failed;
}

} // namespace Uicov::Commands
