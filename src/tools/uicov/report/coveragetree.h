#pragma once

#include "report/coveragerules.h"
#include "report/elementkey.h"

#include <QMap>

#include <vector>

namespace Uicov::Report {

/**
 * What was exercised, over any number of recordings: one node for each element key, so that an
 * element that was used in one recording is used. Nodes are named by their index; the children of a
 * node and the windows are in the order of their steps, whatever order they came in.
 */
class CoverageTree {
public:
    struct Node {
        ElementKey::Step step;
        /** Index of the node above; -1 for a window. */
        int parent = -1;
        QMap<ElementKey::Step, int> children;
        bool isCountable = false;
        Events events;
    };

    /** Sums over countable nodes. */
    struct Totals {
        int elements = 0;
        int used = 0;
        int shown = 0;
        int missed = 0;
        int events = 0;
        int coveredEvents = 0;
        /** Events outside the ratio since this version never counts them. */
        int neverCountedEvents = 0;

        Totals& operator+=(const Totals& other);
    };

    /** The window's node, made when it is not there yet. */
    int window(const ElementKey::Step& step);
    /** The node below that one, made when it is not there yet. */
    int child(int parent, const ElementKey::Step& step);
    /** Makes the node countable and adds the events to those that it has. */
    void count(int node, const Events& events);

    const Node& node(int index) const { return m_nodes[static_cast<std::size_t>(index)]; }
    /** The nodes of the windows. */
    QList<int> windows() const { return m_windows.values(); }
    /** The node and all below it, each before what is below it. */
    std::vector<int> nodesOf(int window) const;
    Totals totalsOf(int window) const;
    ElementKey keyOf(int node) const;

private:
    int add(const ElementKey::Step& step, int parent);

    std::vector<Node> m_nodes;
    QMap<ElementKey::Step, int> m_windows;
};

} // namespace Uicov::Report
