// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/diffcommand.h"

#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "commands/cli/outputs.h"
#include "console/terminal.h"
#include "report/diffreport.h"
#include "store/datafilepath.h"

#include <QFile>

namespace Uicov::Commands {

using Base::Message;
using Cli::CoverageOptions;
using Cli::Done;
using Cli::Failed;
using Cli::Outputs;
using Cli::setUsage;

namespace {

constexpr char examples[] =
    R"(Elements are matched by application and exact key. "Renamed?" is a guess for people and
changes no number. The same uicov.toml is applied to both sides. Without NEW it is the data file
here.

Examples:
  uicov diff main.uicov
  uicov diff --fail-on lost,new-missed main.uicov branch.uicov
  uicov diff --format markdown -o diff.md monday.uirec tuesday.uirec)";

} // namespace

CLI::App* DiffCommand::declare(CLI::App& commands) {
    CLI::App* const app =
        commands.add_subcommand("diff", "Print what was used before and is not now, and more");
    setUsage(*app, "uicov diff [OPTIONS] BASE [NEW]");
    app->add_option("--fail-on", m_failOn, "End with 2 on: lost, new-missed, removed")
        ->type_name("KIND,...")
        ->delimiter(',')
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false)
        ->check(CLI::IsMember(CoverageOptions::choices(Coverage::Gates::differences()))
                    .description(""));
    app->add_option("--format", m_format, "text, markdown or json")
        ->type_name("NAME")
        ->check(CLI::IsMember({"text", "markdown", "json"}).description(""))
        ->capture_default_str();
    app->add_option("--precision", m_precision, "Digits behind the point of percentages")
        ->type_name("N")
        ->envname("UICOV_PRECISION")
        ->check(CLI::Range(0, Coverage::ReportDefaults::mostDigits).description(""));
    app->add_option("-o,--output", m_output, "Write to FILE; - is standard output")
        ->type_name("FILE")
        ->capture_default_str();
    m_options.declare(*app);
    m_options.declareFiles(*app);
    app->footer(examples);
    return app;
}

void DiffCommand::setArguments(const std::vector<std::string>& unread,
                               const std::vector<std::string>* literal) {
    m_options.addFiles(unread);
    if (literal != nullptr) {
        m_options.addFiles(*literal);
    }
}

/** For people only, as after a report. */
void DiffCommand::sayNext(const Coverage::Comparison& comparison,
                          Console::Terminal& terminal) const {
    const auto& changes = comparison.lost().isEmpty() ? comparison.newMissed() : comparison.lost();
    if (m_output != "-" || !terminal.isErrorTerminal() || changes.isEmpty()) {
        return;
    }
    QString next = QStringLiteral("next: uicov explain ") + Store::shellQuoted(changes.first().key);
    if (m_options.files().size() > 1) {
        next += QLatin1Char(' ') +
                Store::shellQuoted(QFile::decodeName(m_options.files().back().c_str()));
    }
    terminal.note(next);
}

int DiffCommand::run(Console::Terminal& terminal) {
    const std::vector<std::string>& files = m_options.files();
    if (files.empty() || files.size() > 2) {
        terminal.error({Message::WrongUse,
                        QStringLiteral("diff takes one or two data files or recordings, not %1; "
                                       "see uicov diff --help")
                            .arg(files.size())});
        return Failed;
    }
    if (!m_options.readConfiguration(terminal)) {
        return Failed;
    }
    const auto base = m_options.read({files.at(0)}, terminal);
    const auto current =
        m_options.read(std::vector<std::string>(files.begin() + 1, files.end()), terminal);
    if (!base || !current) {
        return Failed;
    }
    m_options.warnOfRules(*current, terminal);
    const Coverage::Comparison comparison(*base, *current);
    Report::DiffReport report(comparison);
    report.setPrecision(m_precision >= 0 ? m_precision
                                         : m_options.configuration().report.precision.value_or(0));
    Outputs outputs(terminal);
    outputs.add(m_output, [&](bool) {
        return m_format == "json"       ? report.toJson()
               : m_format == "markdown" ? report.toMarkdown().toUtf8()
                                        : report.toText().toUtf8();
    });
    if (!outputs.write()) {
        return Failed;
    }
    QStringList failOn = m_options.configuration().gates.failOn;
    for (const std::string& kind : m_failOn) {
        failOn.append(QString::fromStdString(kind));
    }
    failOn.removeDuplicates();
    QVector<Coverage::GateResult> gates;
    for (const QString& kind : qAsConst(failOn)) {
        const int count = comparison.count(kind);
        gates.append({QStringLiteral("fail-on ") + kind,
                      QStringLiteral("%1 elements are %2").arg(count).arg(kind),
                      count == 0,
                      {}});
    }
    CoverageOptions::tell(gates, terminal);
    sayNext(comparison, terminal);
    const int ofBase = m_options.exitCode(*base, {});
    return ofBase != Done ? ofBase : m_options.exitCode(*current, gates);
}

} // namespace Uicov::Commands
