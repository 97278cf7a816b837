// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickgesture.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QShortcutEvent>

namespace Vorsk {
namespace UIControls {

bool QuickGesture::isBegunBy(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::Drop:
    case QEvent::ContextMenu:
        return true;
    default:
        return false;
    }
}

void QuickGesture::note(QEvent* event) {
    const QEvent::Type type = event->type();
    if (!isBegunBy(type)) {
        return;
    }
    const bool isRepeated =
        type == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->isAutoRepeat();
    if (!isRepeated) {
        ++m_serial;
    }
    if (type == QEvent::InputMethod) {
        const auto* const composed = static_cast<QInputMethodEvent*>(event);
        m_isCommitted = !composed->commitString().isEmpty() || composed->replacementLength() > 0;
    } else if (type == QEvent::Shortcut) {
        m_shortcut = static_cast<QShortcutEvent*>(event)->key();
    }
}

} // namespace UIControls
} // namespace Vorsk
