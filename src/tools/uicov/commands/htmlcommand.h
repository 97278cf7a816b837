// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/command.h"
#include "commands/cli/coverageoptions.h"
#include "report/html/appearances.h"
#include "report/html/pagemodel.h"
#include "report/html/runhistory.h"

#include <QFileDevice>
#include <QString>

#include <optional>

namespace Uicov::Commands {

/** "uicov html": a page with pictures of what was used and what was not. */
class HtmlCommand : public Cli::Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    /** Who besides the owner may read what shows pictures; nothing where that is not limited. */
    std::optional<QFileDevice::Permissions> readersOf(const Report::Html::PageModel& model) const;
    void fit(Report::Html::PageModel& model, Console::Terminal& terminal) const;
    /** False when something could not be written, which has been told. */
    bool write(Report::Html::PageModel& model, Console::Terminal& terminal) const;
    bool writeFile(const Report::Html::PageModel& model, const QString& path,
                   Console::Terminal& terminal) const;
    bool writeFolder(const Report::Html::PageModel& model, const QString& folder,
                     Console::Terminal& terminal) const;
    void tell(const Report::Html::PageModel& model, const QString& page,
              Console::Terminal& terminal) const;

    Cli::CoverageOptions m_options;
    std::string m_output;
    std::string m_folder;
    std::string m_title;
    double m_maximumMegabytes = 20;
    int m_precision = -1;
    bool m_isPublic = false;
    bool m_isQuiet = false;

    Report::Html::Appearances m_appearances;
    Report::Html::RunHistory m_history;
};

} // namespace Uicov::Commands
