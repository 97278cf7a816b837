#include "coverage/coveragetree.h"

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
    return *this;
}

int CoverageTree::context(const QString& name) {
    const auto known = m_contextNumbers.constFind(name);
    if (known != m_contextNumbers.cend()) {
        return *known;
    }
    m_contextNumbers.insert(name, m_contexts.size());
    m_contexts.append(name);
    return m_contexts.size() - 1;
}

int CoverageTree::window(const ElementKey::Step& step, const QString& application) {
    const int known = findWindow(step, application);
    if (known >= 0) {
        return known;
    }
    const int index = add(step, -1);
    m_nodes.back().application = application;
    m_windows.insert(qMakePair(application, step), index);
    return index;
}

int CoverageTree::child(int parent, const ElementKey::Step& step) {
    const int known = findChild(parent, step);
    if (known >= 0) {
        return known;
    }
    const int index = add(step, parent);
    m_nodes[static_cast<std::size_t>(parent)].children.insert(step, index);
    return index;
}

int CoverageTree::findWindow(const ElementKey::Step& step, const QString& application) const {
    return m_windows.value(qMakePair(application, step), -1);
}

int CoverageTree::findChild(int parent, const ElementKey::Step& step) const {
    return node(parent).children.value(step, -1);
}

int CoverageTree::add(const ElementKey::Step& step, int parent) {
    Node node;
    node.step = step;
    node.parent = parent;
    m_nodes.push_back(node);
    return static_cast<int>(m_nodes.size()) - 1;
}

void CoverageTree::count(int node, const Events& events) {
    Node& target = m_nodes[static_cast<std::size_t>(node)];
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

void CoverageTree::noteMenu(int node, bool isOpened) {
    Node& menu = m_nodes[static_cast<std::size_t>(node)];
    menu.isMenu = true;
    menu.isOpenedMenu = menu.isOpenedMenu || isOpened;
}

void CoverageTree::describe(int node, const Runs::RunElement& element,
                            const QString& structureKey) {
    Node& target = m_nodes[static_cast<std::size_t>(node)];
    if (target.className.isEmpty()) {
        target.type = element.type;
        target.className = element.className;
        target.text = element.text;
        target.structureKey = structureKey;
    }
}

void CoverageTree::ignore(int node, int rule) {
    m_nodes[static_cast<std::size_t>(node)].ignoredBy = rule;
}

bool CoverageTree::counts(int node) const {
    const Node& element = this->node(node);
    return element.isCountable && element.ignoredBy < 0;
}

State CoverageTree::stateOf(int node, const Events& events) const {
    return Coverage::stateOf(events, m_criteria.value(this->node(node).type));
}

int CoverageTree::unopenedMenus() const {
    return static_cast<int>(std::count_if(m_nodes.cbegin(), m_nodes.cend(), [](const Node& node) {
        return node.isMenu && !node.isOpenedMenu;
    }));
}

std::vector<int> CoverageTree::nodesOf(int window) const {
    std::vector<int> result;
    std::vector<int> open{window};
    while (!open.empty()) {
        const int index = open.back();
        open.pop_back();
        result.push_back(index);
        const QList<int> children = node(index).children.values();
        std::copy(children.crbegin(), children.crend(), std::back_inserter(open));
    }
    return result;
}

CoverageTree::Totals CoverageTree::totalsOf(int window) const {
    Totals totals;
    for (const int index : nodesOf(window)) {
        if (!counts(index)) {
            continue;
        }
        const Node& element = node(index);
        ++totals.elements;
        const State state = stateOf(index);
        ++(state == State::Used    ? totals.used
           : state == State::Shown ? totals.shown
                                   : totals.missed);
        if (state == State::Missed && !element.events.contains(Coverage::shownEvent())) {
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
    for (const int window : m_windows) {
        totals += totalsOf(window);
    }
    return totals;
}

int CoverageTree::windowOf(int node) const {
    int window = node;
    while (this->node(window).parent >= 0) {
        window = this->node(window).parent;
    }
    return window;
}

CoverageTree::ElementKey CoverageTree::keyOf(int node) const {
    std::vector<int> path;
    for (int index = node; index >= 0; index = this->node(index).parent) {
        path.push_back(index);
    }
    ElementKey key;
    std::for_each(path.crbegin(), path.crend(),
                  [&](int index) { key.append(this->node(index).step); });
    return key;
}

} // namespace Uicov::Coverage
