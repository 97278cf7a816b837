// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/command.h"
#include "commands/cli/runfilter.h"

#include <QString>
#include <QStringList>

namespace Uicov::Store {
class Combiner;
class DataFileWriter;
} // namespace Uicov::Store

namespace Uicov::Commands {

/** uicov combine: the runs of many recordings and data files in one data file. */
class CombineCommand : public Cli::Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    /** Names what is beside the data file of runs that could not be finished. */
    void tellOfUnfinished(const QString& output, Console::Terminal& terminal) const;
    QStringList inputs(const QString& output, Console::Terminal& terminal);
    int combine(const QStringList& paths, const QString& output, Console::Terminal& terminal);
    bool addAll(const QStringList& paths, Store::Combiner& combiner, Console::Terminal& terminal);

    Cli::RunFilter m_runFilter;
    std::vector<std::string> m_files;
    std::string m_output;
    bool m_appends = false;
    bool m_isQuiet = false;
    bool m_isStrict = false;
    bool m_leavesPicturesOut = false;
    int m_usedFiles = 0;
    int m_skippedFiles = 0;
    int m_damagedFiles = 0;
};

} // namespace Uicov::Commands
