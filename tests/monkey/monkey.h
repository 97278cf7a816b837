// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QEvent>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QRandomGenerator>

QT_BEGIN_NAMESPACE
class QWindow;
QT_END_NAMESPACE

/**
 * Uses the application around it without sense: presses, drags, types, resizes, closes windows. The
 * same seed makes the same choices, whatever the application does in the meantime. Ends the
 * application after so many events, however many of its dialogs are open. Lives on the GUI thread,
 * also in event loops inside event loops.
 */
class Monkey : public QObject {
    Q_OBJECT

public:
    Monkey(quint32 seed, int events);

private:
    void step();
    QWindow* chooseWindow();
    void press(QWindow* window, QPointF place, Qt::MouseButton button);
    void release();
    void type(QWindow* window, quint32 choice);
    static void send(const QPointer<QWindow>& window, QEvent::Type type, QPointF place,
                     Qt::MouseButtons held, Qt::MouseButton button);
    void end();

    QRandomGenerator m_random;
    int m_eventsLeft;
    bool m_isDone = false;
    int m_stepsWithoutWindow = 0;
    /** Where a button is held down. */
    QPointer<QWindow> m_pressed;
    Qt::MouseButton m_button = Qt::NoButton;
    QPointF m_place;
};
