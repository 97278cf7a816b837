// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/diffcommand.h"

#include "commands/basefinder.h"
#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "commands/cli/outputs.h"
#include "commands/cli/values.h"
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
    R"(Elements are matched by application and exact key. What was used before and is not now is
lost, also when its whole view was not opened; only what is missing in a view that was opened is
removed. "Renamed?" is a guess for people and changes no number. The same uicov.toml is applied to
both sides. Without NEW it is the data file here.

Examples:
  uicov diff main.uicov
  uicov diff --fail-on lost,new-missed main.uicov branch.uicov
  uicov diff --base auto --fail-on lost nightly/ branch.uicov
  uicov diff --format markdown -o diff.md monday.uirec tuesday.uirec)";

constexpr int mostCommits = 10000;

/** How many changes of a kind there are, as the end of a sentence. */
QString findingOf(const Coverage::Comparison& comparison, const QString& kind) {
    const auto counted = [](int count, const QString& noun) {
        return QStringLiteral("%1 %2%3").arg(count).arg(noun, count == 1 ? QString()
                                                                         : QStringLiteral("s"));
    };
    const int views = kind == QLatin1String("lost") ? comparison.lostViews().size() : 0;
    const int count = comparison.count(kind);
    QString finding = counted(count - views, comparison.isOfControls() ? QStringLiteral("control")
                                                                       : QStringLiteral("element"));
    if (views > 0) {
        finding += QStringLiteral(" and ") + counted(views, QStringLiteral("view"));
    }
    return finding + (count == 1 ? QStringLiteral(" is ") : QStringLiteral(" are ")) + kind;
}

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
        ->check(Cli::wholeNumber(0, Coverage::ReportDefaults::mostDigits));
    app->add_option("-o,--output", m_output, "Write to FILE; - is standard output")
        ->type_name("FILE")
        ->capture_default_str();
    app->add_option("--base", m_base,
                    "auto: BASE is a folder or data file; take the nearest earlier commit in it")
        ->type_name("auto")
        ->check(CLI::IsMember({"auto"}).description(""));
    app->add_option("--base-limit", m_baseLimit, "Commits that --base auto goes back at most")
        ->type_name("N")
        ->check(Cli::wholeNumber(1, mostCommits))
        ->capture_default_str();
    app->add_option("--earlier", m_earlierFiles,
                    "A run before BASE, the newest first: tells what is flapping")
        ->type_name("FILE")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    app->add_option("--link", m_link, "Where the page of NEW is, for the end of the Markdown form")
        ->type_name("URL");
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

bool DiffCommand::checkFiles(Console::Terminal& terminal) const {
    const std::size_t files = m_options.files().size();
    if (files == 0 || files > 2) {
        terminal.error({Message::WrongUse,
                        QStringLiteral("diff takes one or two data files or recordings, not %1; "
                                       "see uicov diff --help")
                            .arg(files)});
        return false;
    }
    if (!m_base.empty() && !m_earlierFiles.empty()) {
        terminal.error({Message::WrongUse,
                        QStringLiteral("--base auto finds the earlier runs by itself; leave "
                                       "--earlier out, or name the base")});
        return false;
    }
    return true;
}

bool DiffCommand::readNamedBase(Console::Terminal& terminal) {
    const std::string& file = m_options.files().front();
    m_baseText = QFile::decodeName(file.c_str());
    std::vector<std::string> files{file};
    files.insert(files.end(), m_earlierFiles.begin(), m_earlierFiles.end());
    for (const std::string& name : files) {
        m_bases.push_back(m_options.read({name}, terminal));
        if (!m_bases.back()) {
            return false;
        }
    }
    return true;
}

bool DiffCommand::findBase(Console::Terminal& terminal) {
    BaseFinder finder(m_baseLimit,
                      [this](const Runs::Run& run) { return m_options.isWanted(run); });
    if (const auto problem = finder.find(QFile::decodeName(m_options.files().front().c_str()),
                                         m_current->runs(), terminal)) {
        terminal.error(*problem);
        return false;
    }
    for (const BaseFinder::Candidate& candidate : finder.candidates()) {
        m_options.setRunFilter(
            [&candidate](const Runs::Run& run) { return BaseFinder::isOf(run, candidate.commit); });
        m_bases.push_back(m_options.read(candidate.files, terminal));
        if (!m_bases.back()) {
            return false;
        }
    }
    m_options.setRunFilter({});
    m_baseText = BaseFinder::describe(finder.candidates().front(), m_current->runs());
    terminal.note(QStringLiteral("base: commit ") + m_baseText);
    return true;
}

bool DiffCommand::readAll(Console::Terminal& terminal) {
    const std::vector<std::string>& files = m_options.files();
    const std::vector<std::string> current(files.begin() + 1, files.end());
    if (m_base.empty()) {
        if (!readNamedBase(terminal)) {
            return false;
        }
        m_current = m_options.read(current, terminal);
        return m_current != nullptr;
    }
    m_current = m_options.read(current, terminal);
    return m_current && findBase(terminal);
}

QVector<Coverage::GateResult> DiffCommand::judge(const Coverage::Comparison& comparison) const {
    QStringList failOn = m_options.configuration().gates.failOn;
    for (const std::string& kind : m_failOn) {
        failOn.append(QString::fromStdString(kind));
    }
    failOn.removeDuplicates();
    QVector<Coverage::GateResult> gates;
    for (const QString& kind : qAsConst(failOn)) {
        gates.append({QStringLiteral("fail-on ") + kind,
                      findingOf(comparison, kind),
                      comparison.count(kind) == 0,
                      {}});
    }
    return gates;
}

int DiffCommand::run(Console::Terminal& terminal) {
    if (!checkFiles(terminal) || !m_options.readConfiguration(terminal) || !readAll(terminal)) {
        return Failed;
    }
    m_options.warnOfRules(*m_current, terminal);
    Coverage::Comparison::Earlier earlier;
    for (std::size_t i = 1; i < m_bases.size(); ++i) {
        earlier.push_back(m_bases[i].get());
    }
    const Coverage::Comparison comparison(*m_bases.front(), *m_current, earlier);
    Report::DiffReport report(comparison);
    report.setPrecision(m_precision >= 0 ? m_precision
                                         : m_options.configuration().report.precision.value_or(0));
    report.setBase(m_baseText);
    report.setLink(QString::fromStdString(m_link));
    Outputs outputs(terminal);
    outputs.add(m_output, [&](bool) {
        return m_format == "json"       ? report.toJson()
               : m_format == "markdown" ? report.toMarkdown().toUtf8()
                                        : report.toText().toUtf8();
    });
    if (!outputs.write()) {
        return Failed;
    }
    const QVector<Coverage::GateResult> gates = judge(comparison);
    CoverageOptions::tell(gates, terminal);
    sayNext(comparison, terminal);
    const int ofBase = m_options.exitCode(*m_bases.front(), {});
    return ofBase != Done ? ofBase : m_options.exitCode(*m_current, gates);
}

} // namespace Uicov::Commands
