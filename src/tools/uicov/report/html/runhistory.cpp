// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/runhistory.h"

#include "run/run.h"

#include <algorithm>

namespace Uicov::Report::Html {

using Coverage::CoverageResult;
using Coverage::CoverageTree;
using Coverage::State;

void RunHistory::add(const Runs::Run& run, const CoverageResult& coverage) {
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

    CoverageResult alone(coverage.configuration(), coverage.contextPatterns());
    alone.add(run);
    alone.finish();
    row.totals = alone.tree().totals();
    const CoverageTree& tree = coverage.tree();
    const QList<Coverage::WindowId> windows = tree.windows();
    for (const Coverage::WindowId window : windows) {
        for (const Coverage::NodeId node : tree.nodesOf(window)) {
            const auto index = static_cast<std::size_t>(node);
            if (index >= m_firstUse.size()) {
                m_firstUse.resize(index + 1, -1);
            }
            if (m_firstUse[index] < 0 && tree.node(node).isCountable &&
                tree.stateOf(node) == State::Used) {
                m_firstUse[index] = m_rows.size();
            }
        }
    }
    m_rows.append(row);
}

void RunHistory::finish(const CoverageResult& coverage) {
    for (std::size_t node = 0; node < m_firstUse.size(); ++node) {
        if (m_firstUse[node] >= 0 && coverage.tree().counts(static_cast<Coverage::NodeId>(node))) {
            ++m_rows[m_firstUse[node]].firstUsed;
        }
    }
}

int RunHistory::partialRuns() const {
    return static_cast<int>(std::count_if(m_rows.cbegin(), m_rows.cend(),
                                          [](const Row& row) { return !row.isComplete; }));
}

} // namespace Uicov::Report::Html
