// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/command.h"

#include <string>
#include <vector>

namespace Uicov::Commands {

/** uicov help: the help of the command, or of one verb. */
class HelpCommand : public Cli::Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    /** All verbs; theirs who parsed, and there while this runs. */
    CLI::App* m_app = nullptr;
    std::string m_verb;
    bool m_hasMore = false;
};

} // namespace Uicov::Commands
