// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coveragetree.h"
#include "coverage/pattern.h"
#include "coverage/timeline.h"
#include "run/keywalk.h"

#include <QVector>

namespace Uicov::Runs {
struct Run;
struct RunElement;
} // namespace Uicov::Runs

namespace Uicov::Coverage {

/**
 * Adds what runs show to a coverage tree: finds the windows, and below each the elements that
 * count, each once however many parents list it.
 */
class CoverageCollector {
public:
    /** @param tree what is added to; not owned, outlives this */
    explicit CoverageCollector(CoverageTree& tree);

    /** How the project wants elements to be called. */
    void setNameRules(const Runs::NameRules& rules) { m_nameRules = rules; }
    /** Only what happened in contexts that one of them matches counts; none means all. */
    void setContexts(const QVector<Pattern>& patterns) { m_contexts = patterns; }

    void collect(const Runs::Run& run);
    /** Adds what the run knows, and nothing of what happened in it. */
    void collectKnown(const Runs::Run& run);

    /** What the application's version is called: the run's label "version"; empty for none. */
    static QString versionOf(const Runs::Run& run);
    /** After the last collect(), once. */
    void finish() { m_timeline.finish(); }
    /** When what happened in the runs, which are numbered as they were collected. */
    const Timeline& timeline() const { return m_timeline; }

    /** Whether what happens in the context counts. */
    bool isWanted(const QString& context) const;

private:
    using Places = std::vector<Runs::KeyWalk::Place>;

    void addControl(const Runs::RunElement& element, NodeId node,
                    const QVector<ContextId>& contexts);
    void addGroups(const Runs::Run& run, const Places& places, const std::vector<NodeId>& nodes,
                   const QVector<ContextId>& contexts);
    void addNames(const Runs::Run& run, const Places& places, const std::vector<NodeId>& nodes);
    void addOpeners(const Runs::Run& run, const Places& places, const std::vector<NodeId>& nodes);

    CoverageTree& m_tree;
    Timeline m_timeline;
    int m_runs = 0;
    Runs::NameRules m_nameRules;
    QVector<Pattern> m_contexts;
};

} // namespace Uicov::Coverage
