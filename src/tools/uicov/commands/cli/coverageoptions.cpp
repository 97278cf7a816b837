// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/cli/coverageoptions.h"

#include "commands/cli/exitcode.h"
#include "commands/cli/goingruns.h"
#include "commands/cli/values.h"
#include "console/terminal.h"
#include "coverage/configurationfile.h"
#include "store/datafilepath.h"

#include <QFile>

#include <algorithm>

#include <CLI/CLI.hpp>

namespace Uicov::Commands::Cli {

using Base::Message;
using Coverage::CoverageResult;
using Coverage::GateResult;
using Coverage::Pattern;

namespace {

constexpr double mostPercent = 100;

} // namespace

void CoverageOptions::declare(CLI::App& app) {
    app.add_option("--config", m_configFile, "Rules and gates (default: uicov.toml, if it is here)")
        ->type_name("FILE")
        ->envname("UICOV_CONFIG");
    app.add_flag("--no-config", m_ignoresConfig, "Read no uicov.toml");
    app.add_option("--contexts", m_contexts, "Count only what happened in contexts like this")
        ->type_name("PATTERN")
        ->envname("UICOV_CONTEXTS")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    app.add_option("--extension", m_extension,
                   "Read only runs of this extension: controls or classic")
        ->type_name("NAME")
        ->check(CLI::IsMember({"controls", "classic"}).description(""));
    m_runFilter.declare(app);
    app.add_flag("--strict", m_isStrict, "End with 3 when a run is partial")
        ->envname("UICOV_STRICT");
}

void CoverageOptions::declareUniverse(CLI::App& app) {
    app.add_option("--universe", m_universe,
                   "Add what the runs in FILE know, but nothing of what was done in them")
        ->type_name("FILE")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    app.add_flag("--count-unavailable", m_countsUnavailable,
                 "Count controls that were never enabled as missed");
}

void CoverageOptions::declareGates(CLI::App& app) {
    app.add_option("--fail-under", m_failUnder, "End with 2 when less than N percent are used")
        ->type_name("N")
        ->envname("UICOV_FAIL_UNDER")
        ->check(number(0, mostPercent));
    app.add_option("--fail-under-window", m_failUnderWindows, "The same for windows like this")
        ->type_name("PATTERN=N")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    app.add_option("--require-window", m_requiredWindows,
                   "End with 2 when no window like this was opened")
        ->type_name("PATTERN")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
}

void CoverageOptions::declareFiles(CLI::App& app) {
    app.add_option("FILE", m_files, "Data files and recordings (default: UICOV_FILE, else .uicov)")
        ->type_name("")
        ->expected(0, -1);
}

std::vector<std::string> CoverageOptions::choices(const QStringList& words) {
    std::vector<std::string> result;
    for (const QString& word : words) {
        result.push_back(word.toStdString());
    }
    return result;
}

void CoverageOptions::addFiles(const std::vector<std::string>& files) {
    m_files.insert(m_files.end(), files.begin(), files.end());
}

bool CoverageOptions::readConfiguration(Console::Terminal& terminal) {
    m_configuration = Coverage::Configuration();
    const QString path = m_configFile.empty() ? Coverage::defaultConfigurationFile()
                                              : QFile::decodeName(m_configFile.c_str());
    const bool isWanted = !m_ignoresConfig && (!m_configFile.empty() || QFile::exists(path));
    if (isWanted) {
        if (const auto problem = Coverage::readConfiguration(path, m_configuration)) {
            terminal.error(*problem);
            return false;
        }
    }
    return mergeGates(terminal);
}

/** What stands on the command line comes in place of, or on top of, what stands in the file. */
bool CoverageOptions::mergeGates(Console::Terminal& terminal) {
    Coverage::Gates& gates = m_configuration.gates;
    if (m_failUnder >= 0) {
        gates.failUnder = m_failUnder;
    }
    for (const std::string& option : m_failUnderWindows) {
        const QString text = QString::fromStdString(option);
        const int separator = text.lastIndexOf(QLatin1Char('='));
        bool isNumber = false;
        const double percent = text.mid(separator + 1).toDouble(&isNumber);
        if (separator < 1 || !isNumber || percent < 0 || percent > mostPercent) {
            terminal.error({Message::WrongUse,
                            QStringLiteral("--fail-under-window takes PATTERN=N with N from 0 to "
                                           "100, not ") +
                                text});
            return false;
        }
        const QString pattern = text.left(separator);
        const auto same =
            std::find_if(gates.failUnderWindows.begin(), gates.failUnderWindows.end(),
                         [&](const auto& gate) { return gate.first.glob() == pattern; });
        if (same != gates.failUnderWindows.end()) {
            same->second = percent;
        } else {
            gates.failUnderWindows.append(qMakePair(Pattern(pattern), percent));
        }
    }
    for (const std::string& pattern : m_requiredWindows) {
        gates.requiredWindows.append(Pattern(QString::fromStdString(pattern)));
    }
    return true;
}

QStringList CoverageOptions::pathsOf(const std::vector<std::string>& files, QStringList& going,
                                     Console::Terminal& terminal) {
    QStringList named;
    for (const std::string& file : files) {
        named.append(QFile::decodeName(file.c_str()));
    }
    if (named.isEmpty()) {
        named.append(Store::currentDataFile());
    }
    QStringList paths;
    for (const QString& path : qAsConst(named)) {
        const GoingRuns runs = GoingRuns::into(path);
        if (!runs.areThere || (runs.append && QFile::exists(path))) {
            paths.append(path);
        }
        if (!runs.recordings.isEmpty()) {
            terminal.note(path + QStringLiteral(": a run into it is still going; what it has "
                                                "recorded so far is counted"));
            paths += runs.recordings;
            going += runs.recordings;
        } else if (runs.areThere && !paths.contains(path)) {
            terminal.error({Message::InputEmpty,
                            path + QStringLiteral(": the run into it is still going and has "
                                                  "recorded nothing yet; try again later")});
            return {};
        }
    }
    if (files.empty() && going.isEmpty() && !QFile::exists(named.first())) {
        terminal.error({Message::InputMissing,
                        QStringLiteral("there is no data file ") + named.first() +
                            QStringLiteral(" here; make one with uicov run -- APP, or name data "
                                           "files or recordings")});
        return {};
    }
    return paths;
}

bool CoverageOptions::isOfWantedExtension(const Runs::Run& run) const {
    return m_extension.empty() || run.isOfControls() == (m_extension == "controls");
}

bool CoverageOptions::isWanted(const Runs::Run& run) const {
    return isOfWantedExtension(run) && m_runFilter.matches(run) && (!m_filter || m_filter(run));
}

/** A universe that cannot be read would make the answer better than it is. */
bool CoverageOptions::readUniverse(const std::function<void(const Runs::Run&)>& take,
                                   Console::Terminal& terminal) {
    if (m_universe.empty()) {
        return true;
    }
    QStringList paths;
    for (const std::string& file : m_universe) {
        paths.append(QFile::decodeName(file.c_str()));
    }
    Inputs universe;
    return universe.add(paths, terminal) && universe.skippedFiles() == 0 &&
           universe.forEach(take, terminal);
}

std::unique_ptr<CoverageResult> CoverageOptions::read(const std::vector<std::string>& files,
                                                      Console::Terminal& terminal) {
    QStringList going;
    const QStringList paths = pathsOf(files, going, terminal);
    if (paths.isEmpty()) {
        return nullptr;
    }
    QVector<Pattern> contexts;
    for (const std::string& pattern : m_contexts) {
        contexts.append(Pattern(QString::fromStdString(pattern)));
    }
    auto coverage = std::make_unique<CoverageResult>(m_configuration, contexts);
    m_inputs = std::make_unique<Inputs>();
    m_inputs->setTakesPictures(m_visitor != nullptr);
    m_inputs->setGoing(going);
    m_inputs->setFilter([this](const Runs::Run& run) { return isWanted(run); });
    coverage->setCountsUnavailable(m_countsUnavailable);
    bool isMixed = false;
    std::optional<bool> isOfControls;
    const auto fits = [&](const Runs::Run& run) {
        isMixed = isMixed || isOfControls.value_or(run.isOfControls()) != run.isOfControls();
        isOfControls = run.isOfControls();
        return !isMixed;
    };
    const auto take = [&](const Runs::Run& run) {
        if (!fits(run)) {
            return;
        }
        coverage->add(run);
        if (m_visitor) {
            m_visitor(run, *coverage);
        }
    };
    const bool isRead = m_inputs->add(paths, terminal) && m_inputs->forEach(take, terminal);
    m_hasSkippedFiles = m_hasSkippedFiles || m_inputs->skippedFiles() > 0;
    const auto takeKnown = [&](const Runs::Run& run) {
        if (isOfWantedExtension(run) && fits(run)) {
            coverage->addKnown(run);
        }
    };
    if (!isRead || !readUniverse(takeKnown, terminal)) {
        return nullptr; // it has been told why
    }
    if (isMixed) {
        terminal.error(
            {Message::ExtensionsMixed,
             QStringLiteral("some of the runs were made by the controls extension and others by "
                            "the classic one, which know different things; choose with "
                            "--extension controls or --extension classic")});
        return nullptr;
    }
    if (coverage->runs().empty() && !m_runFilter.isEmpty()) {
        terminal.error(
            {Message::NoSuchRun, QStringLiteral("no run is like ") + m_runFilter.toString() +
                                     QStringLiteral("; see uicov dump for those that there are")});
        return nullptr;
    }
    coverage->finish();
    const QStringList& known = coverage->tree().contexts();
    if (!contexts.isEmpty() && known.isEmpty()) {
        terminal.error({Message::NoElements,
                        QStringLiteral("nothing to report: no context is like --contexts; see "
                                       "uicov report --by-context for those that there are")});
        return nullptr;
    }
    const Coverage::CoverageTree::Totals totals = coverage->tree().totals();
    if (totals.elements == 0 && totals.views == 0) {
        terminal.error({Message::NoElements,
                        QStringLiteral("nothing to report: no element that counts was recorded; "
                                       "check that the application showed a window, that "
                                       "--toolkit fits it, and what is ignored")});
        return nullptr;
    }
    return coverage;
}

void CoverageOptions::warnOfRules(const CoverageResult& coverage,
                                  Console::Terminal& terminal) const {
    const QVector<Coverage::IgnoreRule>& rules = m_configuration.ignoreRules;
    for (int i = 0; i < rules.size(); ++i) {
        const CoverageResult::RuleUse use = coverage.ruleUses().at(i);
        const QString where = QStringLiteral("%1:%2: the ignore rule ")
                                  .arg(m_configuration.path)
                                  .arg(rules.at(i).line) +
                              rules.at(i).toString();
        if (use.elements == 0) {
            terminal.warning({Message::IgnoreRuleUnused,
                              where + QStringLiteral(" leaves out nothing that no rule before it "
                                                     "does; correct or remove it")});
        } else if (use.usedElements > 0) {
            terminal.warning({Message::IgnoreRuleHidesUse,
                              where + QStringLiteral(" leaves out %1 elements, %2 of them used; "
                                                     "narrow it")
                                          .arg(use.elements)
                                          .arg(use.usedElements)});
        }
    }
    const auto unused = coverage.unusedCriteria();
    for (const CoverageResult::UnusedCriterion& criterion : unused) {
        const QString what =
            criterion.event.isNull()
                ? QStringLiteral(": [criteria] names %1, but no element that counts is one")
                      .arg(criterion.type)
                : QStringLiteral(": [criteria] asks for \"%1\" of %2, which none announces")
                      .arg(criterion.event, criterion.type);
        const QString cure =
            criterion.nearest.isEmpty()
                ? QStringLiteral("; correct or remove it")
                : QStringLiteral("; the nearest that there is is \"%1\"").arg(criterion.nearest);
        terminal.warning({Message::CriterionUnused, m_configuration.path + what + cure});
    }
}

QVector<GateResult> CoverageOptions::judge(const CoverageResult& coverage, int digits) const {
    return Coverage::judgeGates(coverage, m_configuration.gates, digits);
}

void CoverageOptions::tell(const QVector<GateResult>& gates, Console::Terminal& terminal) {
    for (const GateResult& gate : gates) {
        if (!gate.isMet) {
            terminal.error(
                {Message::GateNotMet, gate.name + QStringLiteral(" is not met: ") + gate.finding});
        }
    }
}

void CoverageOptions::sayNext(const QString& command, Console::Terminal& terminal) const {
    if (!terminal.isErrorTerminal()) {
        return;
    }
    QString next = QStringLiteral("next: ") + command;
    for (const std::string& file : m_files) {
        next += QLatin1Char(' ') + Store::shellQuoted(QFile::decodeName(file.c_str()));
    }
    terminal.note(next);
}

int CoverageOptions::exitCode(const CoverageResult& coverage,
                              const QVector<GateResult>& gates) const {
    if (m_hasSkippedFiles) {
        return Failed;
    }
    if (m_isStrict && coverage.partialRuns() > 0) {
        return PartialData;
    }
    const bool areMet = std::all_of(gates.cbegin(), gates.cend(),
                                    [](const GateResult& gate) { return gate.isMet; });
    return areMet ? Done : PolicyNotMet;
}

} // namespace Uicov::Commands::Cli
