// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coveragetree.h"

#include "coverage/criteria.h"
#include "run/elementkinds.h"
#include "run/runelement.h"

#include <algorithm>

namespace Uicov::Coverage {

CoverageTree::Totals& CoverageTree::Totals::operator+=(const Totals& other) {
    elements += other.elements;
    used += other.used;
    shown += other.shown;
    missed += other.missed;
    events += other.events;
    coveredEvents += other.coveredEvents;
    neverCountedEvents += other.neverCountedEvents;
    missedUnseen += other.missedUnseen;
    unavailable += other.unavailable;
    views += other.views;
    seenViews += other.seenViews;
    return *this;
}

ContextId CoverageTree::context(const QString& name) {
    const auto known = m_contextIds.constFind(name);
    if (known != m_contextIds.cend()) {
        return *known;
    }
    const auto id = static_cast<ContextId>(m_contexts.size());
    m_contextIds.insert(name, id);
    m_contexts.append(name);
    return id;
}

WindowId CoverageTree::window(const ElementKey::Step& step, const QString& application) {
    const WindowId known = findWindow(step, application);
    if (known != NodeId::None) {
        return known;
    }
    const WindowId window(add(step, NodeId::None));
    mutableNode(window).application = application;
    m_windows.insert(qMakePair(application, step), window);
    return window;
}

NodeId CoverageTree::child(NodeId parent, const ElementKey::Step& step) {
    const NodeId known = findChild(parent, step);
    if (known != NodeId::None) {
        return known;
    }
    const NodeId child = add(step, parent);
    mutableNode(parent).children.insert(step, child);
    return child;
}

WindowId CoverageTree::findWindow(const ElementKey::Step& step, const QString& application) const {
    return m_windows.value(qMakePair(application, step));
}

NodeId CoverageTree::findChild(NodeId parent, const ElementKey::Step& step) const {
    return node(parent).children.value(step, NodeId::None);
}

NodeId CoverageTree::add(const ElementKey::Step& step, NodeId parent) {
    Node node;
    node.step = step;
    node.parent = parent;
    m_nodes.push_back(node);
    return static_cast<NodeId>(m_nodes.size() - 1);
}

void CoverageTree::count(NodeId node, const Events& events) {
    Node& target = mutableNode(node);
    target.isCountable = true;
    for (auto it = events.cbegin(); it != events.cend(); ++it) {
        const auto known = target.events.find(it.key());
        if (known == target.events.end()) {
            target.events.insert(it.key(), it.value());
        } else {
            known->count += it->count;
            for (auto hit = it->byContext.cbegin(); hit != it->byContext.cend(); ++hit) {
                known->byContext[hit.key()] += hit.value();
            }
            known->isNeverCounted = known->isNeverCounted && it->isNeverCounted;
        }
    }
}

void CoverageTree::noteMenu(NodeId node, bool isOpened) {
    Node& menu = mutableNode(node);
    menu.isMenu = true;
    menu.isOpenedMenu = menu.isOpenedMenu || isOpened;
}

void CoverageTree::describe(NodeId node, const Runs::RunElement& element,
                            const QString& structureKey) {
    Node& target = mutableNode(node);
    if (target.className.isEmpty()) {
        target.type = element.type;
        target.className = element.className;
        target.text = element.text;
        target.structureKey = structureKey;
    }
}

void CoverageTree::ignore(NodeId node, RuleId rule) {
    mutableNode(node).ignoredBy = rule;
}

bool CoverageTree::counts(NodeId node) const {
    const Node& element = this->node(node);
    return element.isCountable && element.ignoredBy == RuleId::None;
}

bool CoverageTree::isReported(NodeId node) const {
    const Node& element = this->node(node);
    return counts(node) || (element.role == Node::Role::View && element.ignoredBy == RuleId::None);
}

bool CoverageTree::isInNumbers(NodeId node) const {
    return this->node(node).isCountable || this->node(node).role == Node::Role::View;
}

void CoverageTree::noteView(NodeId node, bool wasSeen) {
    Node& view = mutableNode(node);
    view.role = Node::Role::View;
    view.wasSeen = view.wasSeen || wasSeen;
    m_isOfControls = true;
}

void CoverageTree::noteControl(NodeId node, const Runs::RunElement& control, bool isTouched) {
    Node& target = mutableNode(node);
    target.role = Node::Role::Control;
    target.wasSeen = target.wasSeen || control.wasSeen;
    target.wasEnabled = target.wasEnabled || control.wasEnabled;
    const auto add = [&](QStringList& list, const QString& attribute) {
        list += control.attributes.value(attribute).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        list.sort();
        list.removeDuplicates();
    };
    add(target.ways, Runs::AttributeName::ways());
    if (isTouched) {
        add(target.usedWays, Runs::AttributeName::usedWays());
    }
    m_isOfControls = true;
}

void CoverageTree::noteMembers(NodeId node, int members, int usedMembers,
                               const QMap<QString, bool>& names) {
    Node& group = mutableNode(node);
    if (group.members == 0) {
        group.groupName = group.step.caption;
    }
    for (auto it = names.cbegin(); it != names.cend(); ++it) {
        group.memberNames[it.key()] = group.memberNames.value(it.key()) || it.value();
    }
    const bool haveOneName =
        group.memberNames.size() == 1 && !group.memberNames.firstKey().isEmpty();
    group.step.caption = haveOneName ? group.memberNames.firstKey() : group.groupName;
    group.members = qMax(group.members, members);
    group.usedMembers = qMax(group.usedMembers, usedMembers);
}

void CoverageTree::noteVersion(NodeId node, const QString& version) {
    QStringList& versions = mutableNode(node).versions;
    if (!versions.contains(version)) {
        versions.append(version);
    }
}

void CoverageTree::setLastVersion(NodeId node, const QString& version) {
    mutableNode(node).lastVersion = version;
}

void CoverageTree::noteStableName(NodeId node) {
    mutableNode(node).hasStableName = true;
}

void CoverageTree::noteOpener(NodeId view, NodeId control) {
    const QString key = keyOf(control).toString();
    Node& opened = mutableNode(view);
    // The least, so that it makes no difference in which order runs come.
    if (opened.openedBy.isEmpty() || key < opened.openedBy) {
        opened.openedBy = key;
        opened.opener = control;
    }
}

State CoverageTree::controlState(const Node& control, const Events& events) const {
    const QStringList asked = askedOf(control, m_criteria.value(control.type));
    const bool isTouched = Coverage::stateOf(events) == State::Used;
    const bool isUsed = asked.isEmpty()
                            ? isTouched
                            : std::all_of(asked.cbegin(), asked.cend(), [&](const QString& name) {
                                  return isMet(name, control, events);
                              });
    if (isUsed) {
        return State::Used;
    }
    if (!control.wasEnabled && !m_countsUnavailable) {
        return State::Unavailable;
    }
    // Used in a way that is not enough is seen as well.
    return control.wasSeen || isTouched ? State::Shown : State::Missed;
}

State CoverageTree::stateOf(NodeId node, const Events& events) const {
    if (this->node(node).role == Node::Role::Control) {
        return controlState(this->node(node), events);
    }
    return Coverage::stateOf(events, m_criteria.value(this->node(node).type));
}

int CoverageTree::unopenedMenus() const {
    return static_cast<int>(std::count_if(m_nodes.cbegin(), m_nodes.cend(), [](const Node& node) {
        return node.isMenu && !node.isOpenedMenu;
    }));
}

std::vector<NodeId> CoverageTree::nodesBelow(NodeId window) const {
    std::vector<NodeId> result;
    std::vector<NodeId> open{window};
    while (!open.empty()) {
        const NodeId index = open.back();
        open.pop_back();
        result.push_back(index);
        const QList<NodeId> children = node(index).children.values();
        std::copy(children.crbegin(), children.crend(), std::back_inserter(open));
    }
    return result;
}

CoverageTree::Totals CoverageTree::totalsOf(WindowId window) const {
    Totals totals;
    for (const NodeId index : nodesOf(window)) {
        const Node& element = node(index);
        if (element.role == Node::Role::View && element.ignoredBy == RuleId::None) {
            ++totals.views;
            totals.seenViews += element.wasSeen ? 1 : 0;
        }
        if (!counts(index)) {
            continue;
        }
        const State state = stateOf(index);
        if (state == State::Unavailable) {
            ++totals.unavailable;
            continue;
        }
        ++totals.elements;
        ++(state == State::Used    ? totals.used
           : state == State::Shown ? totals.shown
                                   : totals.missed);
        if (state == State::Missed && element.role == Node::Role::Element &&
            !element.events.contains(shownEvent())) {
            ++totals.missedUnseen;
        }
        for (const EventCoverage& event : element.events) {
            if (event.isNeverCounted) {
                ++totals.neverCountedEvents;
            } else {
                ++totals.events;
                totals.coveredEvents += event.isCovered() ? 1 : 0;
            }
        }
    }
    return totals;
}

CoverageTree::Totals CoverageTree::totals() const {
    Totals totals;
    for (const WindowId window : m_windows) {
        totals += totalsOf(window);
    }
    return totals;
}

WindowId CoverageTree::windowOf(NodeId node) const {
    NodeId top = node;
    while (this->node(top).parent != NodeId::None) {
        top = this->node(top).parent;
    }
    return WindowId(top);
}

CoverageTree::ElementKey CoverageTree::keyOf(NodeId node) const {
    std::vector<NodeId> path;
    for (NodeId index = node; index != NodeId::None; index = this->node(index).parent) {
        path.push_back(index);
    }
    ElementKey key;
    std::for_each(path.crbegin(), path.crend(),
                  [&](NodeId index) { key.append(this->node(index).step); });
    return key;
}

} // namespace Uicov::Coverage
