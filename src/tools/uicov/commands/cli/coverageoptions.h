// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/inputs.h"
#include "commands/cli/runfilter.h"
#include "coverage/configuration.h"
#include "coverage/coverageresult.h"
#include "coverage/gatekeeper.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace Uicov::Console {
class Terminal;
}

namespace Uicov::Commands::Cli {

/**
 * What all verbs that report have in common: which files, under which configuration, and the gates.
 * Owned by the verb's command.
 */
class CoverageOptions {
public:
    /** Called with each run, its pictures too, when it was added to the coverage. */
    using Visitor = std::function<void(const Runs::Run&, const Coverage::CoverageResult&)>;

    /** Adds --config, --no-config, --contexts, --strict, and what chooses among the runs. */
    void declare(CLI::App& app);
    /** Adds --universe and --count-unavailable. */
    void declareUniverse(CLI::App& app);
    /** Adds --fail-under and the like. */
    void declareGates(CLI::App& app);
    /** Adds the files. */
    void declareFiles(CLI::App& app);

    /** As the parser takes a list of choices. */
    static std::vector<std::string> choices(const QStringList& words);

    void addFiles(const std::vector<std::string>& files);
    const std::vector<std::string>& files() const { return m_files; }

    /** Reads the configuration; false when something is wrong with it, which has been told. */
    bool readConfiguration(Console::Terminal& terminal);
    /** After readConfiguration(). */
    const Coverage::Configuration& configuration() const { return m_configuration; }

    /** To be called before read(). */
    void setVisitor(const Visitor& visitor) { m_visitor = visitor; }
    /**
     * Reads files, the data file of this folder when there are none, into a coverage.
     * @return null when nothing could be read or nothing in it counts, which has been told
     */
    std::unique_ptr<Coverage::CoverageResult> read(const std::vector<std::string>& files,
                                                   Console::Terminal& terminal);
    /** Only such runs are read; none for all. To be called before read(). */
    void setRunFilter(const std::function<bool(const Runs::Run&)>& filter) { m_filter = filter; }
    /** Whether the options ask for the run: --extension, --label and --run. */
    bool isWanted(const Runs::Run& run) const;
    /** What --label and --run ask for; empty for nothing. */
    QString runFilterText() const { return m_runFilter.toString(); }
    /** The files that were read last, for whoever needs to look at the runs once more. */
    const Inputs& inputs() const { return *m_inputs; }

    /** Warns of ignore rules and criteria that do nothing, and of rules that hide what is used. */
    void warnOfRules(const Coverage::CoverageResult& coverage, Console::Terminal& terminal) const;
    QVector<Coverage::GateResult> judge(const Coverage::CoverageResult& coverage, int digits) const;
    /** Tells which gates are not met. */
    static void tell(const QVector<Coverage::GateResult>& gates, Console::Terminal& terminal);

    /**
     * Names the next command, with the same files; for people only: what runs in scripts knows its
     * next step, and a report is often the last.
     */
    void sayNext(const QString& command, Console::Terminal& terminal) const;

    /** What the verb ends with when its output was written. */
    int exitCode(const Coverage::CoverageResult& coverage,
                 const QVector<Coverage::GateResult>& gates) const;

private:
    bool mergeGates(Console::Terminal& terminal);
    bool isOfWantedExtension(const Runs::Run& run) const;
    bool readUniverse(const std::function<void(const Runs::Run&)>& take,
                      Console::Terminal& terminal);
    /** What is to be read for those files; empty when there is nothing, which has been told.
     * @param going is given the recordings among it that are still being written */
    static QStringList pathsOf(const std::vector<std::string>& files, QStringList& going,
                               Console::Terminal& terminal);

    std::vector<std::string> m_files;
    std::string m_configFile;
    bool m_ignoresConfig = false;
    std::vector<std::string> m_contexts;
    std::string m_extension;
    RunFilter m_runFilter;
    bool m_isStrict = false;
    std::vector<std::string> m_universe;
    bool m_countsUnavailable = false;
    double m_failUnder = -1;
    std::vector<std::string> m_failUnderWindows;
    std::vector<std::string> m_requiredWindows;

    Coverage::Configuration m_configuration;
    Visitor m_visitor;
    std::function<bool(const Runs::Run&)> m_filter;
    std::unique_ptr<Inputs> m_inputs;
    bool m_hasSkippedFiles = false;
};

} // namespace Uicov::Commands::Cli
