// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tracking/mappingelementstore.h"

#include <QPointer>
#include <QRect>
#include <QSet>

#include <functional>

QT_BEGIN_NAMESPACE
class QAction;
class QPoint;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {

namespace UIAbstraction {
class UIEvent;
}

namespace UICoverage {

class QtWidgetObserver;
class QtWidgetsCoverageTracker;

/**
 * The item elements that a menu or menu bar observer keeps for the actions of its widget: what both
 * kinds of observer have in common. A member of the observer; elements belong to their tree.
 */
class ActionElements {
public:
    /** The calls in which menus and menu bars differ. */
    struct WidgetCalls {
        /** An action's rectangle in the widget's own coordinates. */
        QRect (*actionGeometry)(QWidget* widget, QAction* action);
        /** The action at a position in the widget's own coordinates; null when there is none. */
        QAction* (*actionAt)(QWidget* widget, const QPoint& position);
    };

    /** Attaches the tracker's exporter, if it has one, to the item elements. */
    ActionElements(QtWidgetObserver* observer, QtWidgetsCoverageTracker* tracker,
                   const WidgetCalls& calls);

    /**
     * Makes an item element for each action of the widget that is no separator, below the widget's
     * element, and hangs the elements of sub-menus below the items that open them. Actions are read
     * once: what is added or changed later is not followed.
     * @param observe called with each such action once its element is mapped
     */
    void createElements(const std::function<void(QAction*)>& observe);

    void addObserved(QAction* action);
    void removeObserved(QAction* action);

    /** Counts "clicked" on the sender's item element of the action's text; other actions are
     * ignored. */
    void countTriggered(QAction* action, UIAbstraction::UIElement* senderElement);
    /** Counts the event on the element of the action at the position (widget coordinates). */
    void countUsageAt(const QPoint& position, const UIAbstraction::UIEvent& event);
    /** Puts its part of the widget's picture on each item element. */
    void grabImages();

private:
    /** False when the application's own slot, which ran first, has deleted the triggered action. */
    bool isAlive(QAction* action);
    void createElement(QAction* action, const std::function<void(QAction*)>& observe);

    QtWidgetObserver* m_observer;
    QtWidgetsCoverageTracker* m_tracker;
    WidgetCalls m_calls;
    /** Compared with, never looked into: the addresses of dead actions stay. */
    QSet<const QAction*> m_observedActions;
    MappingElementStore m_store;
};

} // namespace UICoverage
} // namespace Vorsk
