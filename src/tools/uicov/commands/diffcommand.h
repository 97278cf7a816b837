// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/command.h"
#include "commands/cli/coverageoptions.h"

#include <memory>
#include <string>
#include <vector>

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
    using CoveragePointer = std::unique_ptr<Coverage::CoverageResult>;

    bool checkFiles(Console::Terminal& terminal) const;
    /** Reads NEW, BASE and what ran before it; false when that failed, which has been told. */
    bool readAll(Console::Terminal& terminal);
    bool readNamedBase(Console::Terminal& terminal);
    bool findBase(Console::Terminal& terminal);
    QVector<Coverage::GateResult> judge(const Coverage::Comparison& comparison) const;
    void sayNext(const Coverage::Comparison& comparison, Console::Terminal& terminal) const;

    Cli::CoverageOptions m_options;
    std::string m_output = "-";
    std::string m_base;
    int m_baseLimit = 50;
    std::vector<std::string> m_earlierFiles;
    std::string m_link;
    std::string m_format = "text";
    int m_precision = -1;
    std::vector<std::string> m_failOn;

    CoveragePointer m_current;
    /** What NEW is compared with, and behind it what ran before, the newest first. */
    std::vector<CoveragePointer> m_bases;
    /** The base in words. */
    QString m_baseText;
};

} // namespace Uicov::Commands
