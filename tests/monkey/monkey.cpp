// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "monkey.h"

#include <QGuiApplication>
#include <QTimer>
#include <QWindow>

#include <cstdio>
#include <utility>

// What Qt Test itself sends events with: they are queued and arrive as those of a real mouse and
// keyboard do.
Q_GUI_EXPORT void qt_handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global,
                                      Qt::MouseButtons state, Qt::MouseButton button,
                                      QEvent::Type type, Qt::KeyboardModifiers modifiers,
                                      int timestamp);
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers modifiers, const QString& text,
                                    bool isRepeated, ushort count);

namespace {

/** Milliseconds between two events: the application is to do something in between. */
constexpr int pace = 4;
/** Steps without any window on the screen after which there will be none any more. */
constexpr int patience = 500;

struct Key {
    int key;
    Qt::KeyboardModifiers modifiers;
    const char* text;
};

/** Nothing that deletes or prints. */
constexpr Key keys[] = {
    {Qt::Key_A, Qt::NoModifier, "a"},          {Qt::Key_1, Qt::NoModifier, "1"},
    {Qt::Key_Space, Qt::NoModifier, " "},      {Qt::Key_Tab, Qt::NoModifier, "\t"},
    {Qt::Key_Backtab, Qt::ShiftModifier, ""},  {Qt::Key_Return, Qt::NoModifier, "\r"},
    {Qt::Key_Escape, Qt::NoModifier, "\x1b"},  {Qt::Key_Up, Qt::NoModifier, ""},
    {Qt::Key_Down, Qt::NoModifier, ""},        {Qt::Key_Left, Qt::NoModifier, ""},
    {Qt::Key_Right, Qt::NoModifier, ""},       {Qt::Key_Home, Qt::NoModifier, ""},
    {Qt::Key_End, Qt::ShiftModifier, ""},      {Qt::Key_PageDown, Qt::NoModifier, ""},
    {Qt::Key_Backspace, Qt::NoModifier, "\b"}, {Qt::Key_F10, Qt::NoModifier, ""},
    {Qt::Key_F, Qt::AltModifier, ""},          {Qt::Key_N, Qt::ControlModifier, "\x0e"},
    {Qt::Key_Z, Qt::ControlModifier, "\x1a"},  {Qt::Key_C, Qt::ControlModifier, "\x03"},
    {Qt::Key_V, Qt::ControlModifier, "\x16"},  {Qt::Key_F4, Qt::ControlModifier, ""},
    {Qt::Key_Menu, Qt::NoModifier, ""},        {Qt::Key_Less, Qt::NoModifier, "<"},
};

/** The choices of a step, out of a hundred. */
enum Choice : quint32 {
    Press = 55,
    Drag = 65,
    Type = 90,
    Resize = 96,
    Close = 98,
    DoubleClick = 100
};

} // namespace

Monkey::Monkey(quint32 seed, int events)
    : m_random(seed)
    , m_eventsLeft(events) {
    QTimer::singleShot(pace, this, &Monkey::step);
}

void Monkey::step() {
    if (m_isDone) {
        return;
    }
    // A timer of its own for each step: what this one opens may have an event loop of its own.
    QTimer::singleShot(pace, this, &Monkey::step);
    // Drawn in any case and all at once, so that no choice depends on what became of the last.
    const quint32 choice = m_random.bounded(100U);
    const double across = m_random.generateDouble();
    const double down = m_random.generateDouble();
    const quint32 detail = m_random.generate();
    const QPointer<QWindow> window = chooseWindow();
    if (window == nullptr) {
        if (++m_stepsWithoutWindow > patience) {
            end();
        }
        return;
    }
    m_stepsWithoutWindow = 0;
    if (--m_eventsLeft < 0) {
        end();
        return;
    }
    const QPointF place(across * window->width(), down * window->height());
    if (m_pressed != nullptr) {
        m_place = place;
        release();
    } else if (choice < Press || choice >= Close) {
        press(window, place, detail % 8 == 0 ? Qt::RightButton : Qt::LeftButton);
        if (choice >= Close) {
            release();
            press(window, place, Qt::LeftButton);
        }
        release();
    } else if (choice < Drag) {
        press(window, place, Qt::LeftButton); // let go of in the next step
    } else if (choice < Type) {
        type(window, detail);
    } else if (choice < Resize) {
        window->resize(80 + static_cast<int>(across * 800), 60 + static_cast<int>(down * 600));
    } else if (window->transientParent() != nullptr || window->modality() != Qt::NonModal) {
        window->close(); // not the last one, which would be the end of it all
    }
}

/** One that takes input, the newest more often than the others. */
QWindow* Monkey::chooseWindow() {
    const quint32 draw = m_random.generate();
    QList<QWindow*> windows;
    const QWindowList all = QGuiApplication::topLevelWindows();
    for (QWindow* window : all) {
        if (window->isVisible() && window->type() != Qt::ToolTip && window->width() > 0) {
            windows.append(window);
        }
    }
    if (windows.isEmpty()) {
        return nullptr;
    }
    if (draw % 2 == 0) {
        QWindow* const modal = QGuiApplication::modalWindow();
        return modal != nullptr && modal->isVisible() ? modal : windows.constLast();
    }
    return windows.at(static_cast<int>((draw / 2) % static_cast<quint32>(windows.size())));
}

void Monkey::press(QWindow* window, QPointF place, Qt::MouseButton button) {
    if (window == nullptr) {
        return; // what was done to it before took it away
    }
    m_pressed = window;
    m_button = button;
    m_place = place;
    window->requestActivate();
    send(window, QEvent::MouseMove, place, Qt::NoButton, Qt::NoButton);
    send(m_pressed, QEvent::MouseButtonPress, place, button, button);
}

void Monkey::release() {
    const QPointer<QWindow> window = std::exchange(m_pressed, nullptr);
    send(window, QEvent::MouseMove, m_place, m_button, Qt::NoButton);
    send(window, QEvent::MouseButtonRelease, m_place, Qt::NoButton, m_button);
}

void Monkey::send(const QPointer<QWindow>& window, QEvent::Type type, QPointF place,
                  Qt::MouseButtons held, Qt::MouseButton button) {
    if (window != nullptr) {
        qt_handleMouseEvent(window, place, window->mapToGlobal(QPoint()) + place, held, button,
                            type, Qt::NoModifier, 0);
    }
}

void Monkey::type(QWindow* window, quint32 choice) {
    QWindow* const focused = QGuiApplication::focusWindow();
    const QPointer<QWindow> target = focused != nullptr ? focused : window;
    const Key& key = keys[choice % (sizeof keys / sizeof *keys)];
    const QString text = QString::fromLatin1(key.text);
    qt_handleKeyEvent(target, QEvent::KeyPress, key.key, key.modifiers, text, false, 1);
    if (target != nullptr) {
        qt_handleKeyEvent(target, QEvent::KeyRelease, key.key, key.modifiers, text, false, 1);
    }
}

/** Says that it came that far: a program that ended by itself is not one that was ended. */
void Monkey::end() {
    m_isDone = true;
    std::fputs("monkey: done\n", stderr);
    QCoreApplication::exit(0);
}
