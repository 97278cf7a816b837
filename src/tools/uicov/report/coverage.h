#pragma once

#include "config/configuration.h"
#include "report/coveragecollector.h"
#include "report/coveragetree.h"
#include "store/run.h"

#include <QMap>
#include <QString>
#include <QVector>

#include <vector>

namespace Uicov::Report {

/**
 * All that a report can tell: what was used of which application, and by which runs, under the
 * rules of a configuration. Add the runs, then finish() once.
 */
class Coverage {
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
    explicit Coverage(const Config::Configuration& configuration,
                      const QVector<Config::Pattern>& contexts = {});

    Coverage(const Coverage&) = delete;
    Coverage& operator=(const Coverage&) = delete;

    void add(const Store::Run& run);
    /** Applies the ignore rules to all that was added. */
    void finish();

    const CoverageTree& tree() const { return m_tree; }
    const Config::Configuration& configuration() const { return m_configuration; }
    /** What becomes of labels before they are compared; nothing when there is no rule. */
    Identity::KeyWalk::LabelRule labelRule() const;
    /** In the order in which they were added; without elements and pictures. */
    const std::vector<Store::Run>& runs() const { return m_runs; }
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
    const QVector<Config::Pattern>& contextPatterns() const { return m_contextPatterns; }
    bool countsContext(const QString& name) const { return m_collector.isWanted(name); }

    /** Whether the pattern means that window: by its step, its label or its class. */
    static bool matchesWindow(const Config::Pattern& pattern,
                              const Identity::ElementKey::Step& window);

private:
    int ruleFor(int node) const;

    const Config::Configuration& m_configuration;
    QVector<Config::Pattern> m_contextPatterns;
    CoverageTree m_tree;
    CoverageCollector m_collector;
    std::vector<Store::Run> m_runs;
    QVector<RuleUse> m_ruleUses;
};

} // namespace Uicov::Report
