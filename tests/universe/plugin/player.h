// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "inputwatch.h"
#include "journal.h"
#include "treewalk.h"

#include <QEvent>
#include <QPointF>
#include <QPointer>
#include <QRandomGenerator>
#include <QSet>
#include <QWindow>

QT_BEGIN_NAMESPACE
class QTouchDevice;
QT_END_NAMESPACE

/**
 * Operates what the accessibility trees of the application around it show, without sense: presses
 * by mouse and touch, drags, types, turns the wheel. The same seed makes the same choices among the
 * same targets. Ends the application after so many steps; with none it only looks on, and closes
 * the windows. Lives on the GUI thread, also in event loops inside event loops.
 */
class Player : public QObject {
    Q_OBJECT

public:
    Player(const QString& journal, quint32 seed, int steps);

private:
    struct Place {
        QPointer<QWindow> window;
        /** In the window. */
        QPointF point;
    };

    void step();
    void showAgain();
    void lookOn();
    void act();
    Place choose(bool isAimed);
    bool areSeen() const;
    bool hasPopup() const;
    void noteWindows(const QWindowList& windows);
    void note(const char* what, const Place& place);
    void press(const Place& place, Qt::MouseButton button);
    void release(const Place& place, Qt::MouseButton button);
    void touch(const Place& place);
    void turnWheel(const Place& place);
    void type(const Place& place);
    void send(const Place& place, QEvent::Type type, Qt::MouseButtons held, Qt::MouseButton button);
    void end();

    Journal m_journal;
    InputWatch m_watch;
    TreeWalk m_walk;
    QRandomGenerator m_random;
    int m_stepsLeft;
    int m_ticks = 0;
    qint64 m_nextWalk = 0;
    int m_stepsWithoutWindow = 0;
    /** The first; it is shown again when the application is left with no window. */
    QPointer<QWindow> m_mainWindow;
    bool m_isIdle;
    bool m_isDone = false;
    /** For how many ticks windows have been there to be seen. */
    QHash<QWindow*, int> m_shownTicks;
    /** How often each node was aimed at. */
    QHash<int, int> m_aims;
    /** Where a button is held down until the next step. */
    Place m_held;
    QTouchDevice* m_touchScreen;
};
