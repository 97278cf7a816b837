// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/configuration.h"
#include "coverage/coveragecollector.h"
#include "coverage/coveragetree.h"
#include "run/run.h"

#include <QMap>
#include <QString>
#include <QVector>

#include <vector>

namespace Uicov::Coverage {

/**
 * All that a report can tell: what was used of which application, and by which runs, under the
 * rules of a configuration. Add the runs, then finish() once.
 */
class CoverageResult {
public:
    /** What an ignore rule did. */
    struct RuleUse {
        /** Elements that it leaves out. */
        int elements = 0;
        /** Those of them that were used. */
        int usedElements = 0;
    };

    /** What a configuration asks of a type that no element can show. */
    struct UnusedCriterion {
        QString type;
        /** Null when no element that counts is of the type. */
        QString event;
        /** What there is that is spelt most alike; null when there is nothing. */
        QString nearest;
    };

    /**
     * @param configuration outlives this
     * @param contexts      only what happened in these counts; none means all
     */
    explicit CoverageResult(const Configuration& configuration,
                            const QVector<Pattern>& contexts = {});

    CoverageResult(const CoverageResult&) = delete;
    CoverageResult& operator=(const CoverageResult&) = delete;

    void add(const Runs::Run& run);
    /** Adds what the run knows, and nothing of what happened in it; it is none of runs(). */
    void addKnown(const Runs::Run& run);
    /** Counts controls that were never enabled as missed. */
    void setCountsUnavailable(bool counts) { m_tree.setCountsUnavailable(counts); }
    /** Applies the ignore rules to all that was added, and finds what only older versions had. */
    void finish();

    const CoverageTree& tree() const { return m_tree; }
    const Configuration& configuration() const { return m_configuration; }
    /** How the configuration wants elements to be called; valid as long as the configuration. */
    Runs::NameRules nameRules() const;
    /** How many runs were added for what they know alone. */
    int knownRuns() const { return m_knownRuns; }
    /** Nodes in the numbers that only older versions of their application had. */
    int outdated() const { return m_outdated; }
    /** Of Qt's own controls, those that the classic extension does not watch: how many of each
     * class were shown, at most in one run. */
    const QMap<QString, int>& unwatched() const { return m_unwatched; }
    /** When what happened; after finish(). */
    const Timeline& timeline() const { return m_collector.timeline(); }
    const Runs::Run& run(RunId run) const { return m_runs[static_cast<std::size_t>(run)]; }
    /** In the order in which they were added; without elements and pictures. */
    const std::vector<Runs::Run>& runs() const { return m_runs; }
    int partialRuns() const;
    /** Of all runs. */
    qint64 picturesLeftOut() const;
    /** A sentence for people that says how many and why; empty when there are none. */
    QString picturesNote() const;
    /** Of all runs, equal lines folded; without the pictures that were left out. */
    QMap<QString, qint64> warnings() const;
    /** By number of the ignore rule. */
    const QVector<RuleUse>& ruleUses() const { return m_ruleUses; }

    /** Criteria that change nothing, in the order of their types. */
    QVector<UnusedCriterion> unusedCriteria() const;

    /** What happens in contexts that one of them matches counts; none means all. */
    const QVector<Pattern>& contextPatterns() const { return m_contextPatterns; }
    bool countsContext(const QString& name) const { return m_collector.isWanted(name); }

    /** Whether the pattern means that window: by its step, its label or its class. */
    static bool matchesWindow(const Pattern& pattern, const Runs::ElementKey::Step& window);

private:
    RuleId ruleFor(NodeId node) const;
    void resolvePrefixes();
    void noteVersion(const Runs::Run& run);
    void findOutdated();
    void applyRules();

    const Configuration& m_configuration;
    QVector<Pattern> m_contextPatterns;
    CoverageTree m_tree;
    CoverageCollector m_collector;
    std::vector<Runs::Run> m_runs;
    int m_knownRuns = 0;
    QMap<QString, int> m_unwatched;
    /** By application: when the newest run of each version was started. */
    QMap<QString, QMap<QString, QString>> m_versions;
    int m_outdated = 0;
    QVector<RuleUse> m_ruleUses;
    /** By number of the ignore rule: the one element whose key or name begins as the rule says. */
    QVector<NodeId> m_namedByRule;
};

} // namespace Uicov::Coverage
