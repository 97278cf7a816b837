// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/command.h"
#include "commands/cli/coverageoptions.h"

namespace Uicov::Commands {

/** uicov explain: why an element counts as it does. */
class ExplainCommand : public Cli::Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    Cli::CoverageOptions m_options;
    std::string m_key;
    std::string m_output = "-";
};

} // namespace Uicov::Commands
