#pragma once

#include "report/coveragetree.h"

#include <QHash>
#include <QSet>

#include <vector>

namespace Vorsk::UIAbstraction {
class UIElement;
}

namespace Uicov::Recording {
class Replay;
}

namespace Uicov::Report {

/**
 * Adds what a replayed recording shows to a coverage tree: finds the windows, and below each the
 * elements that count, each once however many parents list it.
 */
class CoverageCollector {
public:
    /** @param tree what is added to; not owned, outlives this */
    explicit CoverageCollector(CoverageTree& tree);

    /** @param application name of the application whose windows these are */
    void collect(const Recording::Replay& replay, const QString& application = QString());

private:
    using Element = Vorsk::UIAbstraction::UIElement;

    struct Visit {
        const Element* element;
        /** The node of the nearest element above that is a step of keys. */
        int node;
    };

    void addWindow(const Element& window);
    int windowNode(const Element& window);
    void visit(const Visit& visit);
    void enqueueChildren(const Element& element, int node);

    CoverageTree& m_tree;

    // Of the recording that is being collected:
    QString m_application;
    QSet<const Element*> m_knownWindows;
    std::vector<const Element*> m_windowsToCome;
    QHash<ElementKey::Step, int> m_unnamedWindows;
    // Of the window that is being collected:
    QSet<const Element*> m_visited;
    std::vector<Visit> m_open;
    QHash<QPair<int, ElementKey::Step>, int> m_ordinals;
};

} // namespace Uicov::Report
