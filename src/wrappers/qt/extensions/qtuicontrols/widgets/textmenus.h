// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

QT_BEGIN_NAMESPACE
class QAction;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/** Whether it is one of the actions that Qt puts into the context menu of a text (undo, cut, paste
 * and so on), or what clears a line edit. They belong to the text, and what the application adds to
 * that menu does not. */
bool isTextAction(const QAction* action);

/** Whether the action is made by the control for itself: one of the context menu of a text or spin
 * box, or a month of a calendar. */
bool isOwnAction(const QAction* action, const QWidget* control);

} // namespace UIControls
} // namespace Vorsk
