// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/keywalk.h"

#include "run/elementkinds.h"
#include "run/run.h"

#include <algorithm>
#include <utility>

namespace Uicov::Runs {

using Step = ElementKey::Step;

namespace {

bool isWindowBelowOthers(const RunElement& element) {
    return element.isWindowNode && !KeyWalk::isMenu(element);
}

/** Whether the step says more than "some window of a class that Qt brings". */
bool isTelling(const Step& step) {
    const QString& name = step.className.isEmpty() ? step.kind : step.className;
    return !step.label.isEmpty() || !name.startsWith(QLatin1Char('Q'));
}

} // namespace

KeyWalk::KeyWalk(const Run& run, NameRules rules)
    : m_run(run)
    , m_rules(std::move(rules)) {
    if (run.isOfControls()) {
        m_names.emplace(run);
    }
}

bool KeyWalk::isMenu(const RunElement& element) {
    return element.type == QLatin1String("Menu");
}

const RunElement& KeyWalk::element(int index) const {
    return m_run.element(index);
}

std::vector<KeyWalk::Place> KeyWalk::places() {
    m_places.clear();
    m_unnamedWindows.clear();
    m_unnamedStructures.clear();
    m_isKnownWindow.assign(m_run.elements.size(), false);
    m_visitedIn.assign(m_run.elements.size(), -1);
    m_windowsToCome = entryPoints();
    for (const int start : m_windowsToCome) {
        m_isKnownWindow[static_cast<std::size_t>(start)] = true;
    }
    // By index: windows below windows are appended on the way.
    for (std::size_t i = 0; i < m_windowsToCome.size(); ++i) { // NOLINT(modernize-loop-convert)
        m_window = static_cast<int>(i);
        walkWindow(m_windowsToCome[i]);
    }
    return std::move(m_places);
}

/** The roots, then, for each ring of elements that no root leads to, the first of it. */
std::vector<int> KeyWalk::entryPoints() const {
    const int count = static_cast<int>(m_run.elements.size());
    std::vector<bool> reached(m_run.elements.size(), false);
    std::vector<int> starts;
    for (const bool wantsRoots : {true, false}) {
        for (int i = 0; i < count; ++i) {
            const bool isStart =
                wantsRoots ? element(i).parent < 0 : !reached[static_cast<std::size_t>(i)];
            if (isStart) {
                starts.push_back(i);
                addReachable(i, reached);
            }
        }
    }
    return starts;
}

void KeyWalk::addReachable(int start, std::vector<bool>& reached) const {
    std::vector<int> open{start};
    reached[static_cast<std::size_t>(start)] = true;
    while (!open.empty()) {
        const RunElement& next = element(open.back());
        open.pop_back();
        for (const int child : next.children) {
            if (!reached[static_cast<std::size_t>(child)]) {
                reached[static_cast<std::size_t>(child)] = true;
                open.push_back(child);
            }
        }
    }
}

Step KeyWalk::labelled(Step step) const {
    if (m_rules.label && !step.label.isEmpty()) {
        step.label = m_rules.label(step.label);
    }
    return step;
}

/** Views and controls are called by their names and not by their texts, which may be values. */
Step KeyWalk::named(Step step, int element) const {
    if (m_names) {
        step.label = ElementKey::normalisedLabel(m_names->keyLabelOf(element));
        const RunElement& named = this->element(element);
        // What is written on the first of many is not the name of all.
        step.caption = ElementKey::normalisedLabel(
            ControlNames::isOfGroup(named) ? ControlNames::groupNameOf(named)
                                           : ControlNames::captionOf(named, m_rules.captions));
    }
    return labelled(std::move(step));
}

Step KeyWalk::windowStructure(const Step& step, int window) {
    Step structure = ElementKey::structureOf(step, element(window), true);
    if (!isTelling(structure)) {
        structure.ordinal = ++m_unnamedStructures[qMakePair(-1, structure)];
    }
    return structure;
}

void KeyWalk::add(int element, int above, const Step& step, const Step& structure) {
    Place place{element, above, step, structure, step.toKey(), structure.toKey(), false};
    if (above >= 0) {
        const Place& parent = m_places[static_cast<std::size_t>(above)];
        place.key.prepend(parent.key + ElementKey::separator());
        place.structureKey.prepend(parent.structureKey + ElementKey::separator());
    }
    m_places.push_back(std::move(place));
}

/** Whether the element is one of many; the step is called as the project calls the group. */
bool KeyWalk::isGrouped(int element, int above, Step& step) const {
    const RunElement& grouped = this->element(element);
    if (!m_names || ControlNames::isOfGroup(grouped)) {
        return m_names.has_value();
    }
    if (!m_rules.group || isViewType(grouped.type)) {
        return false;
    }
    const QString group = m_rules.group(m_places[static_cast<std::size_t>(above)].key +
                                        ElementKey::separator() + step.toKey());
    if (!group.isNull()) {
        step.label = group;
        step.caption = group;
    }
    return !group.isNull();
}

void KeyWalk::walkWindow(int window) {
    m_ordinals.clear();
    m_structureOrdinals.clear();
    Step step = named(ElementKey::windowStepOf(element(window)), window);
    step.className.clear();
    if (step.label.isEmpty()) {
        step.className = ElementKey::normalisedClass(element(window).className);
    }
    const Step structure = windowStructure(step, window);
    if (!isTelling(step)) {
        // Two of them may be anything: only their order of appearance tells them apart. Of windows
        // with a name of their own, however, each is one more instance of the same thing.
        step.ordinal = ++m_unnamedWindows[qMakePair(-1, step)];
    }
    add(window, -1, step, structure);
    m_visitedIn[static_cast<std::size_t>(window)] = m_window;
    enqueueChildren(window, static_cast<int>(m_places.size()) - 1);
    while (!m_open.empty()) {
        const Visit next = m_open.back();
        m_open.pop_back();
        visit(next);
    }
}

void KeyWalk::enqueueChildren(int index, int above) {
    const RunElement& parent = element(index);
    if (parent.isSubgraphTransparent) {
        return;
    }
    // Taken from the back, so that the first child is visited first.
    std::for_each(parent.children.crbegin(), parent.children.crend(), [&](int child) {
        if (m_visitedIn[static_cast<std::size_t>(child)] != m_window) {
            m_open.push_back({child, above});
        }
    });
}

void KeyWalk::visit(const Visit& visit) {
    const RunElement& visited = element(visit.element);
    const auto index = static_cast<std::size_t>(visit.element);
    if (isWindowBelowOthers(visited)) {
        if (!m_isKnownWindow[index]) {
            m_isKnownWindow[index] = true;
            m_windowsToCome.push_back(visit.element);
        }
        return;
    }
    if (m_visitedIn[index] == m_window) {
        return;
    }
    m_visitedIn[index] = m_window;
    int above = visit.above;
    // A menu that was not opened is transparent still, and a step all the same: the same menu may
    // have been opened in another instance of its window.
    if (!visited.isTransparentNode || isMenu(visited)) {
        Step step = named(ElementKey::stepOf(visited), visit.element);
        Step structure = ElementKey::structureOf(step, visited, false);
        // What is made again and again is one thing to people.
        const bool isOfGroup = isGrouped(visit.element, above, step);
        if (!isOfGroup) {
            step.ordinal = ++m_ordinals[qMakePair(above, step)];
        }
        structure.ordinal = ++m_structureOrdinals[qMakePair(above, structure)];
        add(visit.element, above, step, structure);
        m_places.back().isOfGroup = isOfGroup;
        above = static_cast<int>(m_places.size()) - 1;
    }
    enqueueChildren(visit.element, above);
}

} // namespace Uicov::Runs
