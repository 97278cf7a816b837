// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/completioncommand.h"

#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "console/terminal.h"
#include "help/completion.h"
#include "help/vocabulary.h"

namespace Uicov::Commands {

using Base::Message;
using Cli::Done;
using Cli::Failed;
using Cli::setUsage;
using Help::Shell;

namespace {

constexpr char examples[] =
    R"(An installed uicov has brought the scripts along where shells look for them. For one that is
not installed, or to try it out, read the script into the shell that you are in.

Examples:
  uicov completion bash > ~/.local/share/bash-completion/completions/uicov
  uicov completion zsh > ~/.zfunc/_uicov
  uicov completion fish > ~/.config/fish/completions/uicov.fish
  source <(uicov completion bash))";

Shell shellOf(const std::string& name) {
    if (name == "bash") {
        return Shell::Bash;
    }
    return name == "zsh" ? Shell::Zsh : Shell::Fish;
}

} // namespace

CLI::App* CompletionCommand::declare(CLI::App& commands) {
    m_app = &commands;
    CLI::App* const app =
        commands.add_subcommand("completion", "Print the script that completes uicov in a shell");
    setUsage(*app, "uicov completion SHELL");
    app->add_option("SHELL", m_shell, "bash, zsh or fish")
        ->type_name("")
        ->check(CLI::IsMember({"bash", "zsh", "fish"}).description(""));
    app->footer(examples);
    return app;
}

void CompletionCommand::setArguments(const std::vector<std::string>& unread,
                                     const std::vector<std::string>* literal) {
    m_hasMore = !unread.empty() || (literal != nullptr && !literal->empty());
}

int CompletionCommand::run(Console::Terminal& terminal) {
    if (m_shell.empty() || m_hasMore) {
        terminal.error(
            {Message::WrongUse, QStringLiteral("completion takes one shell: bash, zsh or "
                                               "fish; see uicov completion --help")});
        return Failed;
    }
    const Help::Vocabulary vocabulary(*m_app);
    if (!terminal.write(Help::completionScript(shellOf(m_shell), vocabulary))) {
        terminal.error({Message::OutputNotWritable,
                        QStringLiteral("standard output: not everything could be written")});
        return Failed;
    }
    return Done;
}

} // namespace Uicov::Commands
