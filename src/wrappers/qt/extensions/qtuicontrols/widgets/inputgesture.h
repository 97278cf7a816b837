#pragma once

#include <QEvent>
#include <QPoint>
#include <QPointer>

QT_BEGIN_NAMESPACE
class QAction;
class QMouseEvent;
class QObject;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/**
 * What a person does at a time, from a press to its release: what the events of it say, since who
 * counts a use sees only the signal that it leads to. GUI thread only.
 */
class InputGesture {
public:
    /** To be called for each input event before its receiver gets it. */
    void note(QObject* receiver, QEvent* event);

    /** Another number for each press, key, wheel step, shortcut and so on; moves and releases have
     * that of their press. */
    int serial() const { return m_serial; }
    /** A further gesture that is not told by an input event, as what an accessibility client does.
     */
    void begin() { ++m_serial; }

    /** Of the last mouse event; in the coordinates of its receiver. */
    Qt::MouseButton button() const { return m_button; }
    QPoint position() const { return m_position; }
    /** Whether no button was down at the last mouse event. */
    bool isHovering() const { return m_buttons == Qt::NoButton; }
    /** How far the mouse has gone from where its button was pressed, in pixels along the axes. */
    int travelled() const { return m_travelled; }
    /** Of the last key or shortcut override; 0 before. */
    int key() const { return m_key; }
    Qt::KeyboardModifiers modifiers() const { return m_modifiers; }
    /** Whether the last input method event has changed the text and not only what is being
     * composed.
     */
    bool isCommitted() const { return m_isCommitted; }

    /** What the last event on a menu is about to trigger: the action below the mouse, or the active
     * one, or the one of that mnemonic. Null when it triggers none, or went to no menu. */
    QAction* menuAction() const;

private:
    void noteMouse(QMouseEvent* event);

    int m_serial = 0;
    Qt::MouseButton m_button = Qt::NoButton;
    Qt::MouseButtons m_buttons;
    QPoint m_position;
    QPoint m_pressedAt; ///< on the screen
    int m_travelled = 0;
    int m_key = 0;
    Qt::KeyboardModifiers m_modifiers;
    bool m_isCommitted = false;
    QPointer<QObject> m_menuAction;
};

} // namespace UIControls
} // namespace Vorsk
