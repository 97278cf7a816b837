// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/command.h"
#include "launch/runfolder.h"

#include <QString>

#include <optional>

namespace Uicov::Commands {

/** uicov mark: begins a context in a run that is going. */
class MarkCommand : public Cli::Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    void sayNext(Console::Terminal& terminal) const;
    std::optional<Launch::RunFolder::Info> findRun(Console::Terminal& terminal) const;

    std::vector<std::string> m_names;
    std::string m_output;
    bool m_endsContext = false;
};

} // namespace Uicov::Commands
