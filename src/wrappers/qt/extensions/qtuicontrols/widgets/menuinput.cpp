// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/menuinput.h"

#include <QAction>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QShortcutEvent>

namespace Vorsk {
namespace UIControls {

namespace {

/** The listed action that can be triggered and has that mnemonic; null when none has. */
QAction* actionOfMnemonic(const QWidget* lister, int key) {
    const QList<QAction*> actions = lister->actions();
    for (QAction* const action : actions) {
        const QKeySequence mnemonic = QKeySequence::mnemonic(action->text());
        if (!mnemonic.isEmpty() && (mnemonic[0] & ~int(Qt::KeyboardModifierMask)) == key) {
            return action;
        }
    }
    return nullptr;
}

/** The action that a key press or shortcut on the menu or menu bar triggers. */
template <class Menu>
QAction* keyedAction(const Menu* menu, QEvent* event) {
    if (event->type() == QEvent::Shortcut) {
        const QKeySequence& sequence = static_cast<QShortcutEvent*>(event)->key();
        return sequence.isEmpty()
                   ? nullptr
                   : actionOfMnemonic(menu, sequence[0] & ~int(Qt::KeyboardModifierMask));
    }
    if (event->type() != QEvent::KeyPress) {
        return nullptr;
    }
    const auto* const press = static_cast<QKeyEvent*>(event);
    switch (press->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Select:
    case Qt::Key_Space:
        return menu->activeAction();
    default:
        return actionOfMnemonic(menu, press->key());
    }
}

template <class Menu>
QAction* meantAction(const Menu* menu, QEvent* event) {
    if (event->type() != QEvent::MouseButtonRelease) {
        return keyedAction(menu, event);
    }
    return menu->actionAt(static_cast<QMouseEvent*>(event)->pos());
}

} // namespace

QAction* meantMenuAction(QObject* receiver, QEvent* event) {
    if (const auto* const menu = qobject_cast<const QMenu*>(receiver)) {
        return meantAction(menu, event);
    }
    const auto* const bar = qobject_cast<const QMenuBar*>(receiver);
    return bar == nullptr ? nullptr : meantAction(bar, event);
}

} // namespace UIControls
} // namespace Vorsk
