#pragma once

#include "coverage/coveragerules.h"
#include "run/elementkey.h"

#include <QHash>
#include <QMap>
#include <QPair>
#include <QStringList>

#include <vector>

namespace Uicov::Runs {
struct RunElement;
}

namespace Uicov::Coverage {

/**
 * What was exercised, over any number of recordings: one node for each element key, so that an
 * element that was used in one recording is used. Nodes are named by their index; the children of a
 * node and the windows are in the order of their steps, whatever order they came in.
 */
class CoverageTree {
public:
    using ElementKey = Runs::ElementKey;

    struct Node {
        ElementKey::Step step;
        /** Index of the node above; -1 for a window. */
        int parent = -1;
        /** Of a window: the application that it belongs to; windows of two are never one. */
        QString application;
        QMap<ElementKey::Step, int> children;
        bool isCountable = false;
        /** A menu that was announced, and whether it was ever opened. */
        bool isMenu = false;
        bool isOpenedMenu = false;
        Events events;
        /** As the first run says that has it. */
        QString type;
        QString className;
        QString text;
        QString structureKey;
        /** Number of the rule that leaves it out; -1 for none. */
        int ignoredBy = -1;
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
        /** Missed elements that have no "shown" event, so that nobody knows whether they were seen.
         */
        int missedUnseen = 0;

        Totals& operator+=(const Totals& other);
    };

    /** The number of the context of that name, which is given one when it has none. */
    int context(const QString& name);
    /** Names of all contexts, by their numbers, which tell no order. */
    const QStringList& contexts() const { return m_contexts; }

    /** The node of the application's window, made when it is not there yet. */
    int window(const ElementKey::Step& step, const QString& application = QString());
    /** The node below that one, made when it is not there yet. */
    int child(int parent, const ElementKey::Step& step);
    /** The same, but -1 when it is not there. */
    int findWindow(const ElementKey::Step& step, const QString& application) const;
    int findChild(int parent, const ElementKey::Step& step) const;
    /** Makes the node countable and adds the events to those that it has. */
    void count(int node, const Events& events);
    /** Makes the node a menu; one that was opened once stays opened. */
    void noteMenu(int node, bool isOpened);

    /** Keeps what the element is called; what is known already stays. */
    void describe(int node, const Runs::RunElement& element, const QString& structureKey);
    /** Leaves the node out of every number. */
    void ignore(int node, int rule);
    /** By type: the events that all have to happen for "used". */
    void setCriteria(const QMap<QString, QStringList>& criteria) { m_criteria = criteria; }

    /** Countable, and not left out. */
    bool counts(int node) const;
    State stateOf(int node) const { return stateOf(node, this->node(node).events); }
    /** The state that the node would have if that were all that happened. */
    State stateOf(int node, const Events& events) const;

    const Node& node(int index) const { return m_nodes[static_cast<std::size_t>(index)]; }
    /** Menus that nobody ever opened, so that their entries are unknown. */
    int unopenedMenus() const;
    /** The nodes of the windows, application by application. */
    QList<int> windows() const { return m_windows.values(); }
    /** The node and all below it, each before what is below it. */
    std::vector<int> nodesOf(int window) const;
    Totals totalsOf(int window) const;
    Totals totals() const;
    /** The node that is the window of this one, perhaps itself. */
    int windowOf(int node) const;
    ElementKey keyOf(int node) const;

private:
    int add(const ElementKey::Step& step, int parent);

    QMap<QString, QStringList> m_criteria;
    QStringList m_contexts;
    QHash<QString, int> m_contextNumbers;
    std::vector<Node> m_nodes;
    QMap<QPair<QString, ElementKey::Step>, int> m_windows;
};

} // namespace Uicov::Coverage
