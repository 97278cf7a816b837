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
    /** In the order in which they were added; without elements and pictures. */
    const std::vector<Store::Run>& runs() const { return m_runs; }
    int partialRuns() const;
    /** Of all runs, equal lines folded. */
    QMap<QString, qint64> warnings() const;
    /** By number of the ignore rule. */
    const QVector<RuleUse>& ruleUses() const { return m_ruleUses; }

    /** Whether the pattern means that window: by its step, its label or its class. */
    static bool matchesWindow(const Config::Pattern& pattern,
                              const Identity::ElementKey::Step& window);

private:
    int ruleFor(int node) const;

    const Config::Configuration& m_configuration;
    CoverageTree m_tree;
    CoverageCollector m_collector;
    std::vector<Store::Run> m_runs;
    QVector<RuleUse> m_ruleUses;
};

} // namespace Uicov::Report
