// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/command.h"

#include <string>
#include <vector>

namespace Uicov::Commands {

/** uicov doctor: whether an application can be recorded here and, if not, why. */
class DoctorCommand : public Cli::Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    std::vector<std::string> m_applications;
    std::string m_libraryFolder;
    std::string m_output;
    bool m_isForTools = false;
};

} // namespace Uicov::Commands
