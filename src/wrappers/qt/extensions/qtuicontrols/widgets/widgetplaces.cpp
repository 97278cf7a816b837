// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/widgetplaces.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

namespace Vorsk {
namespace UIControls {

namespace {

/** What shows the action in the lister; null where that has no place of its own. */
QRect placeIn(const QWidget* lister, QAction* action) {
    if (const auto* const menu = qobject_cast<const QMenu*>(lister)) {
        return placeOf(menu, menu->actionGeometry(action));
    }
    if (const auto* const bar = qobject_cast<const QMenuBar*>(lister)) {
        return placeOf(bar, bar->actionGeometry(action));
    }
    if (const auto* const bar = qobject_cast<const QToolBar*>(lister)) {
        const QWidget* const button = bar->widgetForAction(action);
        return button != nullptr && button->isVisible() ? placeOf(button) : QRect();
    }
    const auto* const button = qobject_cast<const QToolButton*>(lister);
    return button != nullptr && button->defaultAction() == action ? placeOf(button) : QRect();
}

} // namespace

QRect placeOf(const QWidget* widget, const QRect& part) {
    return part.isEmpty() ? QRect()
                          : part.translated(widget->mapTo(widget->window(), QPoint(0, 0)));
}

QRect placeOf(const QWidget* widget) {
    return placeOf(widget, widget->rect());
}

QRect shownPlaceOf(const QObject* control, const QWidget* window) {
    if (control->isWidgetType()) {
        const auto* const widget = static_cast<const QWidget*>(control);
        return widget->isVisible() && widget->window() == window ? placeOf(widget) : QRect();
    }
    // The listers are asked with an action that they may change nothing of.
    auto* const action =
        qobject_cast<QAction*>(const_cast<QObject*>(control)); // NOLINT(*-const-cast)
    if (action == nullptr || !action->isVisible()) {
        return {};
    }
    for (const QWidget* lister : action->associatedWidgets()) {
        if (lister->isVisible() && lister->window() == window) {
            const QRect place = placeIn(lister, action);
            if (!place.isEmpty()) {
                return place;
            }
        }
    }
    return {};
}

QRect placeInSight(const QObject* control, const QWidget* window) {
    const QRect place = shownPlaceOf(control, window);
    if (place.isEmpty() || !control->isWidgetType()) {
        return place & window->rect();
    }
    const auto* widget = static_cast<const QWidget*>(control);
    QRect part = widget->rect();
    for (; widget != window && !part.isEmpty(); widget = widget->parentWidget()) {
        part = part.translated(widget->pos()) & widget->parentWidget()->rect();
    }
    return part;
}

} // namespace UIControls
} // namespace Vorsk
