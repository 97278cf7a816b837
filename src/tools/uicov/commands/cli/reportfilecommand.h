// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/command.h"
#include "commands/cli/coverageoptions.h"

#include <QByteArray>
#include <QVector>

#include <string>

namespace Uicov::Commands::Cli {

/** What the verbs share that write the report in one form for other programs. */
class ReportFileCommand : public Command {
public:
    CLI::App* declare(CLI::App& commands) final;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) final;
    int run(Console::Terminal& terminal) final;

protected:
    struct Verb {
        const char* name;
        const char* description;
        const char* examples;
    };

    virtual Verb verb() const = 0;
    /** Options of this verb alone. */
    virtual void declareMore(CLI::App& app);
    virtual QByteArray make(const Coverage::CoverageResult& coverage,
                            const QVector<Coverage::GateResult>& gates) const = 0;

    /** Digits behind the point of percentages. */
    int precision() const;

private:
    CoverageOptions m_options;
    std::string m_output = "-";
    int m_precision = -1;
};

} // namespace Uicov::Commands::Cli
