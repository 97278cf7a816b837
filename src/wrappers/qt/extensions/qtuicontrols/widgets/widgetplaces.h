// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRect>

QT_BEGIN_NAMESPACE
class QAction;
class QObject;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

// Places are in the coordinates of the top-level window.

/** The widget's rectangle, or that part of it. */
QRect placeOf(const QWidget* widget);
QRect placeOf(const QWidget* widget, const QRect& part);

/** Where the window shows the control now, a widget or an action; null when it does not. */
QRect shownPlaceOf(const QObject* control, const QWidget* window);

/** The same without what the widgets around it cut off, as a scroll area does; null when that is
 * all. */
QRect placeInSight(const QObject* control, const QWidget* window);

} // namespace UIControls
} // namespace Vorsk
