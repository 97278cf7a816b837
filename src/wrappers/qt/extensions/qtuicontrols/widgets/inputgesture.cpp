#include "inputgesture.h"

#include "qtuicontrols/widgets/menuinput.h"

#include <QAction>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>

namespace Vorsk {
namespace UIControls {

namespace {

bool beginsGesture(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
    case QEvent::KeyRelease:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::GraphicsSceneMouseMove:
    case QEvent::GraphicsSceneMouseRelease:
    case QEvent::GraphicsSceneMousePress: // the view has got the press
        return false;
    default:
        return true;
    }
}

bool isKey(QEvent::Type type) {
    return type == QEvent::KeyPress || type == QEvent::KeyRelease ||
           type == QEvent::ShortcutOverride;
}

bool isPressOrRelease(QEvent::Type type) {
    return type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease ||
           type == QEvent::MouseButtonDblClick;
}

} // namespace

void InputGesture::note(QObject* receiver, QEvent* event) {
    const QEvent::Type type = event->type();
    if (beginsGesture(type)) {
        ++m_serial;
    }
    if (isKey(type)) {
        const auto* const press = static_cast<QKeyEvent*>(event);
        m_key = press->key();
        m_modifiers = press->modifiers();
    } else if (isPressOrRelease(type) || type == QEvent::MouseMove) {
        noteMouse(static_cast<QMouseEvent*>(event));
    } else if (type == QEvent::InputMethod) {
        const auto* const composed = static_cast<QInputMethodEvent*>(event);
        m_isCommitted = !composed->commitString().isEmpty() || composed->replacementLength() > 0;
    }
    if (type != QEvent::MouseMove) {
        m_menuAction = meantMenuAction(receiver, event);
    }
}

void InputGesture::noteMouse(QMouseEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::MouseMove) {
        m_button = event->button();
    }
    if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick) {
        m_pressedAt = event->globalPos();
    }
    m_travelled = (event->globalPos() - m_pressedAt).manhattanLength();
    m_buttons = event->buttons();
    m_position = event->pos();
    m_modifiers = event->modifiers();
}

QAction* InputGesture::menuAction() const {
    return qobject_cast<QAction*>(m_menuAction.data());
}

} // namespace UIControls
} // namespace Vorsk
