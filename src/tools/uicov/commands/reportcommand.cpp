#include "commands/reportcommand.h"

#include "commands/exitcode.h"
#include "commands/helpformatter.h"
#include "console/displaytext.h"
#include "console/outputfile.h"
#include "console/terminal.h"
#include "report/textreport.h"
#include "store/inputs.h"

#include <QFile>

#include <algorithm>

namespace Uicov::Commands {

using Console::Message;

namespace {

constexpr char examples[] =
    R"(Several files give one report: what was used in any of them is used.

Examples:
  uicov report panel.uirec
  uicov report -m monday.uirec tuesday.uirec
  uicov report --strict -o report.txt *.uirec)";

QString partialNote(int partial, int all, const QString& reason) {
    if (all == 1) {
        return QStringLiteral("The run is partial: it ") + reason +
               QStringLiteral("; all that could be read is counted.");
    }
    return partial == 1
               ? QStringLiteral("1 of %1 runs is partial: it %2; all that could be read is "
                                "counted.")
                     .arg(all)
                     .arg(reason)
               : QStringLiteral("%1 of %2 runs are partial; all that could be read is counted.")
                     .arg(partial)
                     .arg(all);
}

} // namespace

ReportCommand::ReportCommand()
    : m_collector(m_tree) {}

CLI::App* ReportCommand::declare(CLI::App& commands) {
    CLI::App* const app =
        commands.add_subcommand("report", "Print what was used and what was not, per window");
    setUsage(*app, "uicov report [OPTIONS] FILE...");
    app->add_flag("-m,--missed", m_listsMissed,
                  "List below each window what was missed or only shown");
    app->add_flag("--warnings", m_listsWarnings, "List what was warned about while recording");
    app->add_flag("--strict", m_isStrict, "End with 3 when a run is partial");
    app->add_option("-o,--output", m_output, "Write to FILE; - is standard output")
        ->type_name("FILE")
        ->capture_default_str();
    app->add_option("FILE", m_files, "Data files and recordings")->type_name("")->expected(0, -1);
    app->footer(examples);
    return app;
}

void ReportCommand::setArguments(const std::vector<std::string>& unread,
                                 const std::vector<std::string>* literal) {
    m_files.insert(m_files.end(), unread.begin(), unread.end());
    if (literal != nullptr) {
        m_files.insert(m_files.end(), literal->begin(), literal->end());
    }
}

int ReportCommand::run(Console::Terminal& terminal) {
    if (m_files.empty()) {
        terminal.error(
            {Message::WrongUse, QStringLiteral("report takes one recording or more; make "
                                               "one with uicov run -- APP")});
        return Failed;
    }
    QStringList paths;
    for (const std::string& file : m_files) {
        paths.append(QFile::decodeName(file.c_str()));
    }
    Store::Inputs inputs;
    const bool isRead = inputs.add(paths, terminal) &&
                        inputs.forEach([this](const Store::Run& run) { take(run); }, terminal);
    m_skippedFiles = inputs.skippedFiles();
    if (!isRead) {
        return Failed; // it has been told why
    }
    const QList<int> windows = m_tree.windows();
    if (std::none_of(windows.cbegin(), windows.cend(),
                     [this](int window) { return m_tree.totalsOf(window).elements > 0; })) {
        terminal.error(
            {Message::NoElements, QStringLiteral("nothing to report: no element that counts was "
                                                 "recorded; check that the application "
                                                 "showed a window and that --toolkit fits it")});
        return Failed;
    }
    return write(terminal);
}

void ReportCommand::take(const Store::Run& run) {
    ++m_runs;
    if (!run.isComplete) {
        ++m_partialRuns;
        m_partialReason = run.partialReason;
    }
    for (auto it = run.warnings.cbegin(); it != run.warnings.cend(); ++it) {
        m_warnings[it.key()] += it.value();
    }
    m_collector.collect(run);
}

QStringList ReportCommand::notes() const {
    QStringList notes;
    if (m_partialRuns > 0) {
        notes.append(partialNote(m_partialRuns, m_runs, m_partialReason));
    }
    if (m_skippedFiles > 0) {
        notes.append(QStringLiteral("Files that could not be read: %1; nothing of them is counted.")
                         .arg(m_skippedFiles));
    }
    if (m_tree.unopenedMenus() > 0) {
        notes.append(QStringLiteral("Menus never opened: %1; what is in them is unknown and not "
                                    "counted.")
                         .arg(m_tree.unopenedMenus()));
    }
    qint64 warnings = 0;
    for (const qint64 count : m_warnings) {
        warnings += count;
    }
    if (warnings > 0) {
        notes.append(QStringLiteral("Warnings while recording: %1 (%2 different)%3")
                         .arg(warnings)
                         .arg(m_warnings.size())
                         .arg(m_listsWarnings ? QStringLiteral(":")
                                              : QStringLiteral("; list them with --warnings.")));
    }
    for (auto it = m_warnings.cbegin(); m_listsWarnings && it != m_warnings.cend(); ++it) {
        notes.append(QStringLiteral("  %1 x ").arg(it.value(), 6) +
                     Console::DisplayText::escaped(it.key()));
    }
    return notes;
}

int ReportCommand::write(Console::Terminal& terminal) {
    Console::OutputFile output(QFile::decodeName(m_output.c_str()));
    if (const auto problem = output.open()) {
        terminal.error(*problem);
        return Failed;
    }
    Report::TextReport report(m_tree);
    report.setListsMissed(m_listsMissed);
    report.setNotes(notes());
    if (output.isStandardOutput()) {
        report.setWidth(Console::Terminal::outputColumns());
    }
    output.write(report.toString());
    if (const auto problem = output.close()) {
        terminal.error(*problem);
        return Failed;
    }
    if (m_skippedFiles > 0) {
        return Failed;
    }
    return m_isStrict && m_partialRuns > 0 ? PartialData : Done;
}

} // namespace Uicov::Commands
