// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/command.h"
#include "commands/cli/runfilter.h"

#include <QString>

namespace Uicov::Commands::Cli {
class OutputFile;
}

namespace Uicov::Commands {

/** uicov dump: every message of recordings, every run of data files, one line each. */
class DumpCommand : public Cli::Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    void sayNext(const QStringList& paths, Console::Terminal& terminal) const;
    int dump(const QString& path, Cli::OutputFile& output, Console::Terminal& terminal) const;
    /** Whether --run and --label ask for the recording. */
    bool isWanted(const QString& recording) const;
    int dumpRecording(const QString& path, Cli::OutputFile& output,
                      Console::Terminal& terminal) const;
    int dumpDataFile(const QString& path, Cli::OutputFile& output,
                     Console::Terminal& terminal) const;
    bool isForTools() const { return m_format == "json"; }

    std::vector<std::string> m_files;
    std::string m_output = "-";
    std::string m_format = "text";
    Cli::RunFilter m_runFilter;
    bool m_isStrict = false;
    bool m_isOneOfSeveral = false;
};

} // namespace Uicov::Commands
