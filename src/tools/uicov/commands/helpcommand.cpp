// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/helpcommand.h"

#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "commands/parseproblem.h"
#include "console/terminal.h"

namespace Uicov::Commands {

using Base::Message;
using Cli::Done;
using Cli::Failed;
using Cli::setUsage;

namespace {

constexpr char examples[] =
    R"(The same as --help behind the verb. Manual pages are installed: man uicov-report.

Examples:
  uicov help
  uicov help report)";

} // namespace

CLI::App* HelpCommand::declare(CLI::App& commands) {
    m_app = &commands;
    CLI::App* const app = commands.add_subcommand("help", "Print the help of a verb");
    setUsage(*app, "uicov help [VERB]");
    app->add_option("VERB", m_verb, "The verb (default: what all verbs are)")->type_name("");
    app->footer(examples);
    return app;
}

void HelpCommand::setArguments(const std::vector<std::string>& unread,
                               const std::vector<std::string>* literal) {
    m_hasMore = !unread.empty() || (literal != nullptr && !literal->empty());
}

int HelpCommand::run(Console::Terminal& terminal) {
    if (m_hasMore) {
        terminal.error(
            {Message::WrongUse, QStringLiteral("help takes one verb at a time; see uicov --help")});
        return Failed;
    }
    const CLI::App* app = m_verb.empty() ? m_app : nullptr;
    for (const CLI::App* verb : m_app->get_subcommands([](CLI::App*) { return true; })) {
        app = verb->get_name() == m_verb ? verb : app;
    }
    if (app == nullptr) {
        terminal.error(unknownVerb(QString::fromLocal8Bit(m_verb.c_str()), *m_app));
        return Failed;
    }
    // Not by the command's own function, which prints the help of the verb that was read: this one.
    const std::string text =
        app->get_formatter()->make_help(app, app->get_name(), CLI::AppFormatMode::Normal);
    if (!terminal.write(QString::fromStdString(text))) {
        terminal.error({Message::OutputNotWritable,
                        QStringLiteral("standard output: not everything could be written")});
        return Failed;
    }
    return Done;
}

} // namespace Uicov::Commands
