// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicoverage/actionelements.h"
#include "qtuicoverage/qtwidgetobserver.h"

QT_BEGIN_NAMESPACE
class QMenu;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

/**
 * Makes an element for each item of one menu and counts the clicks on them. A menu is a window
 * node; item rectangles are in the menu's own coordinates.
 */
class QtMenuObserver : public QtWidgetObserver {
    Q_OBJECT

public:
    QtMenuObserver(QMenu* menu, UIAbstraction::UIElement* element,
                   QtWidgetsCoverageTracker* tracker);
    ~QtMenuObserver() override;

    /** Counts the event on the item at the position (coordinates of the menu); warns when there is
     * none. */
    void countUsageAt(const QPoint& position, const UIAbstraction::UIEvent& event);
    /** Puts its picture on each item. May end with this observer deleted. */
    void grabActionImages();

private Q_SLOTS:
    void addActionToObserve(QAction* action);
    void actionDestroyed(QObject* object);
    void actionTriggered(QAction* action);

private:
    ActionElements m_items;
};

} // namespace UICoverage
} // namespace Vorsk
