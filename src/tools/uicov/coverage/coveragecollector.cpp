#include "coverage/coveragecollector.h"

#include "run/run.h"

#include <algorithm>

namespace Uicov::Coverage {

using Runs::KeyWalk;
using Runs::RunElement;

CoverageCollector::CoverageCollector(CoverageTree& tree)
    : m_tree(tree) {}

void CoverageCollector::collect(const Runs::Run& run) {
    QVector<ContextId> contexts;
    for (const QString& name : run.contexts) {
        contexts.append(isWanted(name) ? m_tree.context(name) : ContextId::None);
    }
    std::vector<NodeId> nodes;
    const std::vector<KeyWalk::Place> places = KeyWalk(run, m_labelRule).places();
    for (const KeyWalk::Place& place : places) {
        const bool isWindow = place.above < 0;
        const NodeId node =
            isWindow ? m_tree.window(place.step, run.application)
                     : m_tree.child(nodes[static_cast<std::size_t>(place.above)], place.step);
        nodes.push_back(node);
        const RunElement& element = run.element(place.element);
        m_tree.describe(node, element, place.structureKey);
        if (!isWindow && KeyWalk::isMenu(element)) {
            m_tree.noteMenu(node, !element.isTransparentNode);
        }
        if (Coverage::isCountable(element)) {
            m_tree.count(node, Coverage::eventsOf(element, contexts));
        }
    }
}

bool CoverageCollector::isWanted(const QString& context) const {
    return m_contexts.isEmpty() ||
           std::any_of(m_contexts.cbegin(), m_contexts.cend(),
                       [&](const Pattern& pattern) { return pattern.matches(context); });
}

} // namespace Uicov::Coverage
