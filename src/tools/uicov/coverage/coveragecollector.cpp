// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coveragecollector.h"

#include "run/elementkinds.h"
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
    const auto number = static_cast<RunId>(m_runs++);
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
        m_timeline.add(number, node, element, contexts);
        if (run.isOfControls()) {
            addControl(element, node, contexts);
            continue;
        }
        if (!isWindow && KeyWalk::isMenu(element)) {
            m_tree.noteMenu(node, !element.isTransparentNode);
        }
        if (Coverage::isCountable(element)) {
            m_tree.count(node, Coverage::eventsOf(element, contexts));
        }
    }
    if (run.isOfControls()) {
        addGroups(run, places, nodes, contexts);
        addOpeners(run, places, nodes);
    }
}

void CoverageCollector::addControl(const RunElement& element, NodeId node,
                                   const QVector<ContextId>& contexts) {
    Events events = Coverage::eventsOf(element, contexts);
    for (EventCoverage& event : events) {
        event.isNeverCounted = false; // that is the classic extension's
    }
    if (Runs::isViewType(element.type)) {
        m_tree.noteView(node, events.value(Coverage::seenEvent()).isCovered());
    } else {
        m_tree.noteControl(node, element);
        m_tree.count(node, events);
    }
}

/** Tells how many elements of the run are one node, where they are a group. */
void CoverageCollector::addGroups(const Runs::Run& run, const Places& places,
                                  const std::vector<NodeId>& nodes,
                                  const QVector<ContextId>& contexts) {
    const auto wasUsed = [&](const RunElement& element) {
        return std::any_of(element.hits.cbegin(), element.hits.cend(), [&](const Runs::Hit& hit) {
            return contexts.value(hit.context, ContextId::None) != ContextId::None;
        });
    };
    QHash<NodeId, QPair<int, int>> members;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const RunElement& element = run.element(places[i].element);
        if (Runs::ControlNames::isOfGroup(element)) {
            QPair<int, int>& group = members[nodes[i]];
            ++group.first;
            group.second += wasUsed(element) ? 1 : 0;
        }
    }
    for (auto it = members.cbegin(); it != members.cend(); ++it) {
        m_tree.noteMembers(it.key(), it->first, it->second);
    }
}

void CoverageCollector::addOpeners(const Runs::Run& run, const Places& places,
                                   const std::vector<NodeId>& nodes) {
    QHash<QString, NodeId> nodeOf;
    for (std::size_t i = 0; i < places.size(); ++i) {
        nodeOf.insert(run.element(places[i].element).id, nodes[i]);
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        const QString opened =
            run.element(places[i].element).attributes.value(Runs::AttributeName::opens());
        const auto view = nodeOf.constFind(opened);
        if (!opened.isEmpty() && view != nodeOf.cend()) {
            m_tree.noteOpener(*view, m_tree.keyOf(nodes[i]).toString());
        }
    }
}

bool CoverageCollector::isWanted(const QString& context) const {
    return m_contexts.isEmpty() ||
           std::any_of(m_contexts.cbegin(), m_contexts.cend(),
                       [&](const Pattern& pattern) { return pattern.matches(context); });
}

} // namespace Uicov::Coverage
