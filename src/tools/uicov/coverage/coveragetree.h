// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

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
 * element that was used in one recording is used. The children of a
 * node and the windows are in the order of their steps, whatever order they came in.
 */
class CoverageTree {
public:
    using ElementKey = Runs::ElementKey;

    struct Node {
        ElementKey::Step step;
        /** The node above; None for a window. */
        NodeId parent = NodeId::None;
        /** Of a window: the application that it belongs to; windows of two are never one. */
        QString application;
        QMap<ElementKey::Step, NodeId> children;
        bool isCountable = false;
        /** What the element is to a run of the controls extension; Element in one of the classic.
         */
        enum class Role { Element, View, Control };
        Role role = Role::Element;
        /** Of a view: a person could see it at some time. Of a control: and operate it. */
        bool wasSeen = false;
        /** Of a control: at some time. */
        bool wasEnabled = false;
        /** How many of a group there were at most in one run, and how many of them were used; 0 and
         * 0 for no group. */
        int members = 0;
        int usedMembers = 0;
        /** Of a group: what is written on its members, each once, and whether one of that name was
         * used; empty for those that have no name. */
        QMap<QString, bool> memberNames;
        QString groupName;
        /** Of a command: the ways in which it can be reached, and those in which it was. */
        QStringList ways;
        QStringList usedWays;
        /** Of a view: the key of the control that brings it up, where that is known. */
        QString openedBy;
        /** That control; None where it is not known. */
        NodeId opener = NodeId::None;
        /** Its step of the key is a name that the program's authors gave it. */
        bool hasStableName = false;
        /** The versions of the application whose runs have it, "" for runs that tell none. */
        QStringList versions;
        /** The newest of them where no run of the newest version has it; null for all else. */
        QString lastVersion;
        /** A menu that was announced, and whether it was ever opened. */
        bool isMenu = false;
        bool isOpenedMenu = false;
        Events events;
        /** As the first run says that has it. */
        QString type;
        QString className;
        QString text;
        QString structureKey;
        /** The rule that leaves it out. */
        RuleId ignoredBy = RuleId::None;
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
        /** Controls that were never enabled; in none of the other numbers. */
        int unavailable = 0;
        int views = 0;
        int seenViews = 0;

        Totals& operator+=(const Totals& other);
    };

    /** The number of the context of that name, which is given one when it has none. */
    ContextId context(const QString& name);
    /** Names of all contexts, by their numbers, which tell no order. */
    const QStringList& contexts() const { return m_contexts; }
    const QString& contextName(ContextId context) const {
        return m_contexts.at(static_cast<int>(context));
    }

    /** The node of the application's window, made when it is not there yet. */
    WindowId window(const ElementKey::Step& step, const QString& application = QString());
    /** The node below that one, made when it is not there yet. */
    NodeId child(NodeId parent, const ElementKey::Step& step);
    /** The same, but None when it is not there. */
    WindowId findWindow(const ElementKey::Step& step, const QString& application) const;
    NodeId findChild(NodeId parent, const ElementKey::Step& step) const;
    /** Makes the node countable and adds the events to those that it has. */
    void count(NodeId node, const Events& events);
    /** Makes the node a view, and adds to it whether it was seen. */
    void noteView(NodeId node, bool wasSeen);
    /** Makes the node a control, and adds what is known of it.
     * @param isTouched whether what happened to it counts, and so the ways in which it was used */
    void noteControl(NodeId node, const Runs::RunElement& control, bool isTouched = true);
    /** What a run has of a group: how many members, how many of them were used, and what is
     * written on them. A group of which all members are called the same is called so as well. */
    void noteMembers(NodeId node, int members, int usedMembers, const QMap<QString, bool>& names);
    /** A run of that version has the node. */
    void noteVersion(NodeId node, const QString& version);
    /** No run of the newest version has the node; the last that has it is of this one. */
    void setLastVersion(NodeId node, const QString& version);
    /** The key of the node hangs on a name of the program's authors. */
    void noteStableName(NodeId node);
    /** The view is brought up by the control. */
    void noteOpener(NodeId view, NodeId control);
    /** Whether the tree is of runs of the controls extension. */
    bool isOfControls() const { return m_isOfControls; }

    /** Makes the node a menu; one that was opened once stays opened. */
    void noteMenu(NodeId node, bool isOpened);

    /** Keeps what the element is called; what is known already stays. */
    void describe(NodeId node, const Runs::RunElement& element, const QString& structureKey);
    /** Leaves the node out of every number. */
    void ignore(NodeId node, RuleId rule);
    /** Counts controls that were never enabled as missed; else they are in no number. */
    void setCountsUnavailable(bool counts) { m_countsUnavailable = counts; }
    bool countsUnavailable() const { return m_countsUnavailable; }
    /** By type: what is asked for, all of it, for "used"; see criteria.h. */
    void setCriteria(const QMap<QString, QStringList>& criteria) { m_criteria = criteria; }

    /** Countable, and not left out. */
    bool counts(NodeId node) const;
    /** Whether reports speak of the node: one that counts, or a view that no rule left out. */
    bool isReported(NodeId node) const;
    State stateOf(NodeId node) const { return stateOf(node, this->node(node).events); }
    /** Whether reports count the node, if no rule left it out: an element, a control or a view. */
    bool isInNumbers(NodeId node) const;
    /** The state that the node would have if that were all that happened. */
    State stateOf(NodeId node, const Events& events) const;

    const Node& node(NodeId node) const { return m_nodes[static_cast<std::size_t>(node)]; }
    /** Menus that nobody ever opened, so that their entries are unknown. */
    int unopenedMenus() const;
    /** The nodes of the windows, application by application. */
    QList<WindowId> windows() const { return m_windows.values(); }
    /** The window and all below it, each before what is below it. */
    std::vector<NodeId> nodesOf(WindowId window) const { return nodesBelow(window); }
    /** The same for any node. */
    std::vector<NodeId> nodesBelow(NodeId node) const;
    Totals totalsOf(WindowId window) const;
    Totals totals() const;
    /** The node that is the window of this one, perhaps itself. */
    WindowId windowOf(NodeId node) const;
    ElementKey keyOf(NodeId node) const;

private:
    Node& mutableNode(NodeId node) { return m_nodes[static_cast<std::size_t>(node)]; }
    NodeId add(const ElementKey::Step& step, NodeId parent);

    State controlState(const Node& control, const Events& events) const;

    bool m_isOfControls = false;
    bool m_countsUnavailable = false;
    QMap<QString, QStringList> m_criteria;
    QStringList m_contexts;
    QHash<QString, ContextId> m_contextIds;
    std::vector<Node> m_nodes;
    QMap<QPair<QString, ElementKey::Step>, WindowId> m_windows;
};

} // namespace Uicov::Coverage
