#include "report/coveragecollector.h"

#include "recording/replay.h"
#include "uiabstraction/uielement.h"

#include <algorithm>

namespace Uicov::Report {

using Vorsk::UIAbstraction::UIElement;

namespace {

bool isMenu(const UIElement& element) {
    return element.standardType().name() == QLatin1String("Menu");
}

/** A menu is a window to the toolkit, but to people it is a part of the one that it opens over. */
bool isWindowBelowOthers(const UIElement& element) {
    return element.isWindowNode() && !isMenu(element);
}

/** Whether the step says more than "some window of a class that Qt brings". */
bool isTelling(const ElementKey::Step& step) {
    const QString& name = step.className.isEmpty() ? step.kind : step.className;
    return !step.label.isEmpty() || !name.startsWith(QLatin1Char('Q'));
}

} // namespace

CoverageCollector::CoverageCollector(CoverageTree& tree)
    : m_tree(tree) {}

void CoverageCollector::collect(const Recording::Replay& replay, const QString& application) {
    m_application = application;
    m_knownWindows.clear();
    m_unnamedWindows.clear();
    const QVector<const UIElement*> starts = replay.entryPoints();
    m_windowsToCome.assign(starts.cbegin(), starts.cend());
    for (const UIElement* start : starts) {
        m_knownWindows.insert(start);
    }
    // By index: windows below windows are appended on the way.
    for (std::size_t i = 0; i < m_windowsToCome.size(); ++i) { // NOLINT(modernize-loop-convert)
        addWindow(*m_windowsToCome[i]);
    }
}

void CoverageCollector::addWindow(const UIElement& window) {
    m_visited.clear();
    m_ordinals.clear();
    const int node = windowNode(window);
    if (CoverageRules::isCountable(window)) {
        m_tree.count(node, CoverageRules::eventsOf(window));
    }
    m_visited.insert(&window);
    enqueueChildren(window, node);
    while (!m_open.empty()) {
        const Visit next = m_open.back();
        m_open.pop_back();
        visit(next);
    }
}

int CoverageCollector::windowNode(const UIElement& window) {
    ElementKey::Step step = ElementKey::windowStepOf(window);
    if (!isTelling(step)) {
        // Two of them may be anything: only their order of appearance tells them apart. Of windows
        // with a name of their own, however, each is one more instance of the same thing.
        step.ordinal = ++m_unnamedWindows[step];
    }
    return m_tree.window(step, m_application);
}

void CoverageCollector::enqueueChildren(const UIElement& element, int node) {
    if (element.isSubgraphTransparent()) {
        return;
    }
    const QList<UIElement*> children = element.children();
    // Taken from the back, so that the first child is visited first.
    std::for_each(children.crbegin(), children.crend(), [&](const UIElement* child) {
        if (!m_visited.contains(child)) {
            m_open.push_back({child, node});
        }
    });
}

void CoverageCollector::visit(const Visit& visit) {
    const UIElement& element = *visit.element;
    if (isWindowBelowOthers(element)) {
        if (!m_knownWindows.contains(&element)) {
            m_knownWindows.insert(&element);
            m_windowsToCome.push_back(&element);
        }
        return;
    }
    if (m_visited.contains(&element)) {
        return;
    }
    m_visited.insert(&element);
    int node = visit.node;
    // A menu that was not opened is transparent still, and a step all the same: the same menu may
    // have been opened in another instance of its window.
    if (!element.isTransparentNode() || isMenu(element)) {
        ElementKey::Step step = ElementKey::stepOf(element);
        step.ordinal = ++m_ordinals[qMakePair(visit.node, step)];
        node = m_tree.child(visit.node, step);
    }
    if (isMenu(element)) {
        m_tree.noteMenu(node, !element.isTransparentNode());
    }
    if (CoverageRules::isCountable(element)) {
        m_tree.count(node, CoverageRules::eventsOf(element));
    }
    enqueueChildren(element, node);
}

} // namespace Uicov::Report
