// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/command.h"
#include "commands/cli/coverageoptions.h"
#include "commands/pagemaker.h"

#include <QString>
#include <QStringList>

namespace Uicov::Commands {

/** uicov report: what was used, per window, over any number of runs. */
class ReportCommand : public Cli::Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    using Gates = QVector<Coverage::GateResult>;

    void takeDefaults();
    void sayNext(const Coverage::CoverageResult& coverage, Console::Terminal& terminal) const;
    QString text(const Coverage::CoverageResult& coverage, const Gates& gates,
                 bool isTerminal) const;
    QString markdown(const Coverage::CoverageResult& coverage, const Gates& gates) const;
    QStringList notes(const Coverage::CoverageResult& coverage) const;
    bool writeAll(const Coverage::CoverageResult& coverage, const Gates& gates,
                  Console::Terminal& terminal);

    Cli::CoverageOptions m_options;
    std::string m_output = "-";
    std::string m_format = "text";
    std::string m_sort;
    int m_precision = -1;
    bool m_listsMissed = false;
    bool m_skipsCovered = false;
    bool m_isWide = false;
    bool m_showsContexts = false;
    bool m_byContext = false;
    bool m_listsGroups = false;
    bool m_showsHealth = false;
    bool m_showsTimeline = false;
    bool m_listsWarnings = false;
    std::string m_html;
    PageMaker m_pages;
    std::string m_json;
    std::string m_junit;
    std::string m_badge;
    std::string m_markdown;
};

} // namespace Uicov::Commands
