#include "report/coveragecollector.h"

#include "identity/keywalk.h"
#include "store/run.h"

namespace Uicov::Report {

using Identity::KeyWalk;
using Store::RunElement;

CoverageCollector::CoverageCollector(CoverageTree& tree)
    : m_tree(tree) {}

void CoverageCollector::collect(const Store::Run& run) {
    QVector<int> contexts;
    for (const QString& name : run.contexts) {
        contexts.append(m_tree.context(name));
    }
    std::vector<int> nodes;
    const std::vector<KeyWalk::Place> places = KeyWalk(run).places();
    for (const KeyWalk::Place& place : places) {
        const bool isWindow = place.above < 0;
        const int node =
            isWindow ? m_tree.window(place.step, run.application)
                     : m_tree.child(nodes[static_cast<std::size_t>(place.above)], place.step);
        nodes.push_back(node);
        const RunElement& element = run.element(place.element);
        if (!isWindow && KeyWalk::isMenu(element)) {
            m_tree.noteMenu(node, !element.isTransparentNode);
        }
        if (CoverageRules::isCountable(element)) {
            m_tree.count(node, CoverageRules::eventsOf(element, contexts));
        }
    }
}

} // namespace Uicov::Report
