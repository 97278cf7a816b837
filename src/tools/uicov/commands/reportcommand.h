#pragma once

#include "commands/command.h"
#include "report/coveragecollector.h"
#include "report/coveragetree.h"

#include <QMap>
#include <QString>
#include <QStringList>

namespace Uicov::Store {
struct Run;
}

namespace Uicov::Commands {

/** uicov report: what was used, per window, over any number of recordings. */
class ReportCommand : public Command {
public:
    ReportCommand();

    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    void take(const Store::Run& run);
    QStringList notes() const;
    int write(Console::Terminal& terminal);

    std::vector<std::string> m_files;
    std::string m_output = "-";
    bool m_listsMissed = false;
    bool m_listsWarnings = false;
    bool m_isStrict = false;

    Report::CoverageTree m_tree;
    Report::CoverageCollector m_collector;
    QMap<QString, qint64> m_warnings;
    int m_runs = 0;
    int m_partialRuns = 0;
    QString m_partialReason;
    int m_skippedFiles = 0;
};

} // namespace Uicov::Commands
