#include "commands/reportcommand.h"

#include "commands/exitcode.h"
#include "commands/helpformatter.h"
#include "console/displaytext.h"
#include "console/outputfile.h"
#include "console/terminal.h"
#include "recording/recordingloader.h"
#include "recordingformat/recordingformat.h"
#include "report/textreport.h"

#include <QFile>

#include <algorithm>

namespace Uicov::Commands {

using Console::Message;
using Recording::RecordingLoader;

namespace {

constexpr char examples[] =
    R"(Several recordings give one report: what was used in any of them is used.

Examples:
  uicov report panel.uirec
  uicov report -m monday.uirec tuesday.uirec
  uicov report --strict -o report.txt *.uirec)";

QString ofRecordings(int part, int all) {
    return all == 1 ? QStringLiteral("The recording")
                    : QStringLiteral("%1 of %2 recordings").arg(part).arg(all);
}

QString areOrIs(int count) {
    return count == 1 ? QStringLiteral(" is ") : QStringLiteral(" are ");
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
    app->add_flag("--strict", m_isStrict,
                  "End with 3 when a recording ended abnormally or is damaged");
    app->add_option("-o,--output", m_output, "Write to FILE; - is standard output")
        ->type_name("FILE")
        ->capture_default_str();
    app->add_option("FILE", m_files, "Recordings")->type_name("")->expected(0, -1);
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
    for (const std::string& file : m_files) {
        load(QFile::decodeName(file.c_str()), terminal);
    }
    if (m_readFiles == 0) {
        return Failed; // each file has been told of
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

void ReportCommand::load(const QString& path, Console::Terminal& terminal) {
    RecordingLoader loader(path);
    if (const auto problem = loader.load()) {
        terminal.error(*problem);
        ++m_skippedFiles;
        return;
    }
    ++m_readFiles;
    bool isDamaged = false;
    const QVector<Console::Problem> problems = loader.problems();
    for (const Console::Problem& problem : problems) {
        terminal.warning(problem);
        isDamaged = isDamaged || problem.message != Message::EndedAbnormally;
    }
    m_abnormalEnds += !isDamaged && !problems.isEmpty() ? 1 : 0;
    m_damagedFiles += isDamaged ? 1 : 0;
    for (auto it = loader.warnings().cbegin(); it != loader.warnings().cend(); ++it) {
        m_warnings[it.key()] += it.value();
    }
    m_collector.collect(loader.replay(), loader.process().value(QString::fromLatin1(
                                             RecordingFormat::Key::application)));
}

QStringList ReportCommand::notes() const {
    const int all = m_readFiles + m_skippedFiles;
    QStringList notes;
    if (m_abnormalEnds > 0) {
        notes.append(ofRecordings(m_abnormalEnds, all) +
                     QStringLiteral(" ended abnormally; all that was sent until then is counted."));
    }
    if (m_damagedFiles > 0) {
        notes.append(ofRecordings(m_damagedFiles, all) + areOrIs(m_damagedFiles) +
                     QStringLiteral("damaged; what could be read is counted."));
    }
    if (m_skippedFiles > 0) {
        notes.append(ofRecordings(m_skippedFiles, all) +
                     QStringLiteral(" could not be read; nothing of that is counted."));
    }
    if (m_tree.unopenedMenus() > 0) {
        notes.append(QStringLiteral("Menus never opened: %1; what is in them is unknown and not "
                                    "counted.")
                         .arg(m_tree.unopenedMenus()));
    }
    quint64 warnings = 0;
    for (const quint64 count : m_warnings) {
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
    return m_isStrict && m_abnormalEnds + m_damagedFiles > 0 ? PartialData : Done;
}

} // namespace Uicov::Commands
