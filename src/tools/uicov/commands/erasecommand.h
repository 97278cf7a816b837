// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/command.h"

#include <QString>
#include <QStringList>

namespace Uicov::Commands {

/** uicov erase: takes the data file away, or single runs out of it. */
class EraseCommand : public Cli::Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    int eraseFile(const QString& path, Console::Terminal& terminal) const;
    int eraseRuns(const QString& path, Console::Terminal& terminal) const;

    std::vector<std::string> m_files;
    std::vector<std::string> m_runs;
    std::vector<std::string> m_labels;
    bool m_isQuiet = false;
};

} // namespace Uicov::Commands
