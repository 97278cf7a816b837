// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementtype.h"
#include "qtuicontrols/widgets/widgetclass.h"

#include <QList>

QT_BEGIN_NAMESPACE
class QAction;
class QMenu;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/** Whether the widget is a control by what it extends and where it stands. @param type set when it
 * is one */
bool isControl(const QWidget* widget, WidgetClass cls, ElementType* type);

/** Whether the widget is a piece of the control that it lies in, although its class could stand by
 * itself. */
bool isPartByPlace(const QWidget* widget, WidgetClass cls);

/** Whether the widget lies in a control, or a part of one, that holds nothing but its own parts. */
bool liesInControl(const QWidget* widget);

/** The menu that a button brings up; null when it has none. */
QMenu* menuOf(const QWidget* button);

/** Those of a widget's actions that a person can reach through it, and how. */
struct ReachedActions {
    QList<QAction*> actions;
    Way way = Way::Menu;
    /** Whether the widget, or a menu, shows them. */
    bool isShown = true;
};
ReachedActions actionsReachedThrough(const QWidget* widget, WidgetClass cls);

} // namespace UIControls
} // namespace Vorsk
