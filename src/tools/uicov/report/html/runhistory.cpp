#include "report/html/runhistory.h"

#include "report/coveragecollector.h"
#include "store/run.h"

#include <algorithm>

namespace Uicov::Report::Html {

void RunHistory::add(const Store::Run& run, const CoverageTree& tree) {
    Row row;
    row.application = run.application;
    row.started = run.started;
    row.qtVersion = run.qtVersion;
    row.platform = run.platform;
    row.locale = run.locale;
    row.architecture = run.architecture;
    row.labels = run.labels;
    row.contexts = run.contexts;
    row.contexts.removeAll(QString());
    row.isComplete = run.isComplete;
    row.partialReason = run.partialReason;

    CoverageTree alone;
    CoverageCollector(alone).collect(run);
    const QList<int> ownWindows = alone.windows();
    for (const int window : ownWindows) {
        row.totals += alone.totalsOf(window);
    }
    const QList<int> windows = tree.windows();
    for (const int window : windows) {
        for (const int node : tree.nodesOf(window)) {
            const CoverageTree::Node& element = tree.node(node);
            const auto index = static_cast<std::size_t>(node);
            if (index >= m_isUsed.size()) {
                m_isUsed.resize(index + 1, false);
            }
            if (element.isCountable && !m_isUsed[index] &&
                CoverageRules::stateOf(element.events) == State::Used) {
                m_isUsed[index] = true;
                ++row.firstUsed;
            }
        }
    }
    m_rows.append(row);
}

int RunHistory::partialRuns() const {
    return static_cast<int>(std::count_if(m_rows.cbegin(), m_rows.cend(),
                                          [](const Row& row) { return !row.isComplete; }));
}

} // namespace Uicov::Report::Html
