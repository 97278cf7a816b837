// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/reportcommand.h"

#include "base/displaytext.h"
#include "base/percentage.h"
#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "commands/cli/outputs.h"
#include "commands/cli/values.h"
#include "console/terminal.h"
#include "report/badge.h"
#include "report/contexttable.h"
#include "report/healthtable.h"
#include "report/jsonreport.h"
#include "report/junitreport.h"
#include "report/markdownreport.h"
#include "report/textreport.h"
#include "report/timelinereport.h"
#include "store/datafilepath.h"

#include <QFile>

namespace Uicov::Commands {

using Cli::CoverageOptions;
using Cli::Failed;
using Cli::Outputs;
using Cli::setUsage;
using Coverage::CoverageResult;

namespace {

constexpr char examples[] =
    R"(Several files give one report: what was used in any of them is used. Rules and gates can stand
in uicov.toml; see docs/configuration.md.

Examples:
  uicov report -m
  uicov report --timeline nightly.uicov
  uicov report --sort cover --skip-covered monday.uicov tuesday.uirec
  uicov report --fail-under 80 --require-window "Settings*"
  uicov report --format markdown -o report.md --junit report.xml --badge gui.svg)";

/** What the numbers of a row take beside the window's name. */
constexpr int numberColumns = 46;
constexpr int leastNameColumns = 24;

/** What the numbers are out of. */
QStringList notesOnWhatIsKnown(const CoverageResult& coverage) {
    QStringList notes;
    if (coverage.knownRuns() > 0) {
        notes.append(QStringLiteral("Runs that are counted for what they know and not for what was "
                                    "done in them (--universe): %1.")
                         .arg(coverage.knownRuns()));
    }
    if (coverage.tree().countsUnavailable()) {
        notes.append(QStringLiteral("Controls that were never enabled count as missed "
                                    "(--count-unavailable)."));
    }
    if (coverage.outdated() > 0) {
        notes.append(QStringLiteral("Views and controls that only older versions had: %1; -m marks "
                                    "them, and they go with the last run that has them.")
                         .arg(coverage.outdated()));
    }
    QStringList classes;
    const QMap<QString, int>& unwatched = coverage.unwatched();
    for (auto it = unwatched.cbegin(); it != unwatched.cend(); ++it) {
        classes.append(QStringLiteral("%1 ").arg(it.value()) + it.key());
    }
    if (!classes.isEmpty()) {
        notes.append(QStringLiteral("Not watched: ") + classes.join(QStringLiteral(", ")) +
                     QStringLiteral("; record without --classic."));
    }
    return notes;
}

QString partialNote(const CoverageResult& coverage) {
    const int partial = coverage.partialRuns();
    QString reason;
    for (const Runs::Run& run : coverage.runs()) {
        reason = run.isComplete ? reason : run.partialReason;
    }
    const auto all = static_cast<int>(coverage.runs().size());
    if (partial != 1) {
        return QStringLiteral("%1 of %2 runs are partial; all that could be read is counted.")
            .arg(partial)
            .arg(all);
    }
    const QString which = all == 1 ? QStringLiteral("The run is partial: it ")
                                   : QStringLiteral("1 of %1 runs is partial: it ").arg(all);
    return which + reason + QStringLiteral("; all that could be read is counted.");
}

} // namespace

CLI::App* ReportCommand::declare(CLI::App& commands) {
    CLI::App* const app =
        commands.add_subcommand("report", "Print what was used and what was not, per window");
    setUsage(*app, "uicov report [OPTIONS] [FILE...]");
    app->add_flag("-m,--missed", m_listsMissed,
                  "List below each window what was missed: elements and events");
    app->add_option("--sort", m_sort, "Order: name, elements, missed, cover; -name and so on")
        ->type_name("ORDER")
        ->envname("UICOV_SORT")
        ->check(CLI::IsMember(CoverageOptions::choices(Coverage::ReportDefaults::sorts()))
                    .description(""));
    app->add_flag("--skip-covered", m_skipsCovered, "Leave out windows that are wholly used");
    app->add_option("--precision", m_precision, "Digits behind the point of percentages")
        ->type_name("N")
        ->envname("UICOV_PRECISION")
        ->check(Cli::wholeNumber(0, Coverage::ReportDefaults::mostDigits));
    app->add_option("--format", m_format, "text, markdown, or total: only the number")
        ->type_name("NAME")
        ->check(CLI::IsMember({"text", "markdown", "total"}).description(""))
        ->capture_default_str();
    app->add_flag("--wide", m_isWide, "Never shorten the names of windows, on a terminal neither");
    app->add_flag("--show-contexts", m_showsContexts, "List what was used, and in which contexts");
    app->add_flag("--by-context", m_byContext, "Print what each context adds that no other does");
    app->add_flag("--groups", m_listsGroups,
                  "List what is made again and again with each of its members");
    app->add_flag("--health", m_showsHealth,
                  "Print how many keys hang on names, captions and ordinals");
    app->add_flag("--timeline", m_showsTimeline, "Print what was used and seen when, run by run");
    app->add_flag("--warnings", m_listsWarnings, "List what was warned about while recording");
    m_options.declare(*app);
    m_options.declareUniverse(*app);
    m_options.declareGates(*app);
    app->add_option("-o,--output", m_output, "Write to FILE; - is standard output")
        ->type_name("FILE")
        ->capture_default_str();
    app->add_option("--html", m_html, "Write the page of uicov html to FILE as well")
        ->type_name("FILE");
    app->add_option("--json", m_json, "Write uicov json to FILE as well")->type_name("FILE");
    app->add_option("--junit", m_junit, "Write uicov junit to FILE as well")->type_name("FILE");
    app->add_option("--badge", m_badge, "Write uicov badge to FILE as well")->type_name("FILE");
    app->add_option("--markdown", m_markdown, "Write the report as Markdown to FILE as well")
        ->type_name("FILE");
    m_options.declareFiles(*app);
    app->footer(examples);
    return app;
}

void ReportCommand::setArguments(const std::vector<std::string>& unread,
                                 const std::vector<std::string>* literal) {
    m_options.addFiles(unread);
    if (literal != nullptr) {
        m_options.addFiles(*literal);
    }
}

void ReportCommand::takeDefaults() {
    const Coverage::ReportDefaults& defaults = m_options.configuration().report;
    if (m_precision < 0) {
        m_precision = defaults.precision.value_or(0);
    }
    if (m_sort.empty()) {
        m_sort = defaults.sort.toStdString();
    }
    m_skipsCovered = m_skipsCovered || defaults.skipsCovered;
    m_listsMissed = m_listsMissed || defaults.listsMissed;
}

int ReportCommand::run(Console::Terminal& terminal) {
    if (!m_options.readConfiguration(terminal)) {
        return Failed;
    }
    takeDefaults();
    if (!m_html.empty()) {
        m_pages.watch(m_options);
    }
    const auto coverage = m_options.read(m_options.files(), terminal);
    if (!coverage) {
        return Failed;
    }
    m_options.warnOfRules(*coverage, terminal);
    const Gates gates = m_options.judge(*coverage, m_precision);
    if (!writeAll(*coverage, gates, terminal)) {
        return Failed;
    }
    CoverageOptions::tell(gates, terminal);
    sayNext(*coverage, terminal);
    return m_options.exitCode(*coverage, gates);
}

void ReportCommand::sayNext(const CoverageResult& coverage, Console::Terminal& terminal) const {
    const Coverage::CoverageTree::Totals totals = coverage.tree().totals();
    if (m_output == "-" && totals.events != totals.coveredEvents) {
        m_options.sayNext(m_listsMissed ? QStringLiteral("uicov html")
                                        : QStringLiteral("uicov report -m"),
                          terminal);
    }
}

bool ReportCommand::writeAll(const CoverageResult& coverage, const Gates& gates,
                             Console::Terminal& terminal) {
    const QString page = QFile::decodeName(m_html.c_str());
    if (!m_html.empty() &&
        (!PageMaker::mayWrite(page, terminal) || !PageMaker::isNoLink(page, terminal))) {
        return false;
    }
    Outputs outputs(terminal);
    const bool isMarkdown = m_format == "markdown";
    outputs.add(m_output, [&](bool isStandardOutput) {
        return (isMarkdown ? markdown(coverage, gates) : text(coverage, gates, isStandardOutput))
            .toUtf8();
    });
    outputs.add(
        m_html,
        [&](bool) {
            Report::Html::PageModel model =
                m_pages.model(coverage, gates, m_precision, m_options.inputs().skippedFiles());
            return m_pages.toBytes(model, terminal);
        },
        m_pages.readers());
    outputs.add(m_json, [&](bool) { return Report::JsonReport(coverage, gates).toBytes(); });
    outputs.add(m_junit, [&](bool) {
        Report::JUnitReport report(coverage, gates);
        report.setPrecision(m_precision);
        return report.toBytes();
    });
    outputs.add(m_badge, [&](bool) {
        return Report::badgeSvg(QStringLiteral("GUI coverage"), coverage.tree().totals(),
                                m_precision);
    });
    outputs.add(m_markdown, [&](bool) { return markdown(coverage, gates).toUtf8(); });
    return outputs.write();
}

QString ReportCommand::text(const CoverageResult& coverage, const Gates& /*gates*/,
                            bool isTerminal) const {
    if (m_format == "total") {
        const Coverage::CoverageTree::Totals totals = coverage.tree().totals();
        return Base::percentNumber(totals.used, totals.elements, m_precision) + QLatin1Char('\n');
    }
    if (m_showsHealth) {
        return Report::healthTable(coverage.tree());
    }
    if (m_byContext) {
        return Report::contextTable(coverage.tree());
    }
    if (m_showsTimeline) {
        return Report::TimelineReport(coverage).toText();
    }
    Report::TextReport report(coverage.tree());
    report.setListsMissed(m_listsMissed);
    report.setListsContexts(m_showsContexts);
    report.setListsGroups(m_listsGroups);
    report.setPrecision(m_precision);
    report.setOrder(QString::fromStdString(m_sort));
    report.setSkipsCovered(m_skipsCovered);
    report.setNotes(notes(coverage));
    if (isTerminal && !m_isWide && !m_listsMissed) {
        report.setNameColumns(
            qMax(leastNameColumns, Console::Terminal::outputColumns() - numberColumns));
    }
    return report.toString();
}

QString ReportCommand::markdown(const CoverageResult& coverage, const Gates& gates) const {
    if (m_byContext) {
        return Report::contextTableMarkdown(coverage.tree());
    }
    if (m_showsTimeline) {
        return Report::TimelineReport(coverage).toMarkdown();
    }
    Report::MarkdownReport report(coverage);
    report.setListsContexts(m_showsContexts);
    report.setListsMissed(m_listsMissed);
    report.setPrecision(m_precision);
    report.setOrder(QString::fromStdString(m_sort));
    report.setSkipsCovered(m_skipsCovered);
    report.setGates(gates);
    report.setNotes(notes(coverage));
    return report.toString();
}

QStringList ReportCommand::notes(const CoverageResult& coverage) const {
    QStringList notes;
    if (coverage.partialRuns() > 0) {
        notes.append(partialNote(coverage));
    }
    if (coverage.picturesLeftOut() > 0) {
        notes.append(coverage.picturesNote());
    }
    if (m_options.inputs().skippedFiles() > 0) {
        notes.append(QStringLiteral("Files that could not be read: %1; nothing of them is counted.")
                         .arg(m_options.inputs().skippedFiles()));
    }
    if (!m_options.runFilterText().isEmpty()) {
        notes.append(QStringLiteral("Only runs like this are counted: ") +
                     Base::escaped(m_options.runFilterText()));
    }
    QStringList patterns;
    for (const Coverage::Pattern& pattern : coverage.contextPatterns()) {
        patterns.append(pattern.glob());
    }
    if (!patterns.isEmpty()) {
        notes.append(QStringLiteral("Only what happened in contexts like this is counted: ") +
                     Base::escaped(patterns.join(QStringLiteral(", "))));
    }
    notes += notesOnWhatIsKnown(coverage);
    int ignored = 0;
    for (const CoverageResult::RuleUse& use : coverage.ruleUses()) {
        ignored += use.elements;
    }
    if (ignored > 0) {
        notes.append(QStringLiteral("Elements left out by rules: %1.").arg(ignored));
    }
    if (coverage.tree().unopenedMenus() > 0) {
        notes.append(QStringLiteral("Menus never opened: %1; what is in them is unknown and not "
                                    "counted.")
                         .arg(coverage.tree().unopenedMenus()));
    }
    const QMap<QString, qint64> lines = coverage.warnings();
    qint64 warnings = 0;
    for (const qint64 count : lines) {
        warnings += count;
    }
    if (warnings > 0) {
        notes.append(QStringLiteral("Warnings while recording: %1 (%2 different)%3")
                         .arg(warnings)
                         .arg(lines.size())
                         .arg(m_listsWarnings ? QStringLiteral(":")
                                              : QStringLiteral("; list them with --warnings.")));
    }
    for (auto it = lines.cbegin(); m_listsWarnings && it != lines.cend(); ++it) {
        notes.append(QStringLiteral("  %1 x ").arg(it.value(), 6) + Base::escaped(it.key()));
    }
    return notes;
}

} // namespace Uicov::Commands
