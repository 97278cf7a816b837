// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/command.h"
#include "commands/cli/coverageoptions.h"

namespace Uicov::Coverage {
class Comparison;
}

namespace Uicov::Commands {

/** uicov diff: what two data files or recordings differ in. */
class DiffCommand : public Cli::Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    void sayNext(const Coverage::Comparison& comparison, Console::Terminal& terminal) const;

    Cli::CoverageOptions m_options;
    std::string m_output = "-";
    std::string m_format = "text";
    int m_precision = -1;
    std::vector<std::string> m_failOn;
};

} // namespace Uicov::Commands
