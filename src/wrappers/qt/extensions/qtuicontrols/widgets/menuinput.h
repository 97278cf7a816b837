// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

QT_BEGIN_NAMESPACE
class QAction;
class QEvent;
class QObject;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/**
 * What an input event on a menu or menu bar is about to trigger: the action below the mouse, the
 * active one, or the one of that mnemonic. Null when it triggers none, or goes to something else.
 */
QAction* meantMenuAction(QObject* receiver, QEvent* event);

} // namespace UIControls
} // namespace Vorsk
