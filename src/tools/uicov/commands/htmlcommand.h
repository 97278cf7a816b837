#pragma once

#include "commands/command.h"
#include "report/coveragecollector.h"
#include "report/coveragetree.h"
#include "report/html/appearances.h"
#include "report/html/pagemodel.h"
#include "report/html/runhistory.h"

#include <QMap>
#include <QString>
#include <QStringList>

namespace Uicov::Store {
struct Run;
}

namespace Uicov::Commands {

/** "uicov html": a page with pictures of what was used and what was not. */
class HtmlCommand : public Command {
public:
    HtmlCommand();

    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    bool read(Console::Terminal& terminal);
    void take(const Store::Run& run);
    Report::Html::PageModel model() const;
    QString title() const;
    QStringList warnings() const;
    QStringList notes(const Report::Html::PageModel& model) const;
    void fit(Report::Html::PageModel& model, Console::Terminal& terminal) const;
    int write(Console::Terminal& terminal);
    int writeFile(const Report::Html::PageModel& model, Console::Terminal& terminal) const;
    int writeFolder(const Report::Html::PageModel& model, Console::Terminal& terminal) const;
    void tell(const Report::Html::PageModel& model, const QString& page,
              Console::Terminal& terminal) const;

    std::vector<std::string> m_files;
    std::string m_output;
    std::string m_folder;
    std::string m_title;
    double m_maximumMegabytes = 20;
    bool m_isStrict = false;
    bool m_isQuiet = false;

    Report::CoverageTree m_tree;
    Report::CoverageCollector m_collector;
    Report::Html::Appearances m_appearances;
    Report::Html::RunHistory m_history;
    QMap<QString, qint64> m_warnings;
    int m_skippedFiles = 0;
};

} // namespace Uicov::Commands
