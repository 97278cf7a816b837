// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/command.h"
#include "commands/cli/coverageoptions.h"
#include "commands/pagemaker.h"

#include <QString>

namespace Uicov::Commands {

/** "uicov html": a page with pictures of what was used and what was not. */
class HtmlCommand : public Cli::Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    /** False when something could not be written, which has been told. */
    bool write(Report::Html::PageModel& model, Console::Terminal& terminal) const;
    bool writeFolder(const Report::Html::PageModel& model, const QString& folder,
                     Console::Terminal& terminal) const;

    Cli::CoverageOptions m_options;
    std::string m_output;
    std::string m_folder;
    std::string m_title;
    double m_maximumMegabytes = PageMaker::usualMegabytes;
    int m_precision = -1;
    bool m_isPublic = false;
    bool m_isQuiet = false;

    PageMaker m_pages;
};

} // namespace Uicov::Commands
