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
    const std::vector<KeyWalk::Place> places = KeyWalk(run, m_nameRules).places();
    for (const KeyWalk::Place& place : places) {
        const bool isWindow = place.above < 0;
        const NodeId node =
            isWindow ? m_tree.window(place.step, run.application)
                     : m_tree.child(nodes[static_cast<std::size_t>(place.above)], place.step);
        nodes.push_back(node);
        const RunElement& element = run.element(place.element);
        m_tree.describe(node, element, place.structureKey);
        m_tree.noteVersion(node, versionOf(run));
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
        addNames(run, places, nodes);
    }
}

void CoverageCollector::collectKnown(const Runs::Run& run) {
    Runs::Run known = run;
    for (RunElement& element : known.elements) {
        element.hits.clear();
        element.wasSeen = false;
        element.attributes.remove(Runs::AttributeName::usedWays());
    }
    collect(known);
}

QString CoverageCollector::versionOf(const Runs::Run& run) {
    return run.labels.value(QStringLiteral("version"));
}

void CoverageCollector::addNames(const Runs::Run& run, const Places& places,
                                 const std::vector<NodeId>& nodes) {
    const Runs::ControlNames names(run);
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (places[i].isOfGroup || names.hasStableName(places[i].element)) {
            m_tree.noteStableName(nodes[i]);
        }
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
        // What was done in contexts that do not count was done by no way either.
        const bool isTouched = std::any_of(events.cbegin(), events.cend(),
                                           [](const EventCoverage& e) { return e.isCovered(); });
        m_tree.noteControl(node, element, isTouched);
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
    struct Group {
        int members = 0;
        int used = 0;
        QMap<QString, bool> names;
    };
    QHash<NodeId, Group> groups;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const RunElement& element = run.element(places[i].element);
        if (places[i].isOfGroup) {
            Group& group = groups[nodes[i]];
            const QString name = Runs::ElementKey::normalisedLabel(
                Runs::ControlNames::captionOf(element, m_nameRules.captions));
            const bool isUsed = wasUsed(element);
            ++group.members;
            group.used += isUsed ? 1 : 0;
            group.names[name] = group.names.value(name) || isUsed;
        }
    }
    for (auto it = groups.cbegin(); it != groups.cend(); ++it) {
        m_tree.noteMembers(it.key(), it->members, it->used, it->names);
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
            m_tree.noteOpener(*view, nodes[i]);
        }
    }
}

bool CoverageCollector::isWanted(const QString& context) const {
    return m_contexts.isEmpty() ||
           std::any_of(m_contexts.cbegin(), m_contexts.cend(),
                       [&](const Pattern& pattern) { return pattern.matches(context); });
}

} // namespace Uicov::Coverage
