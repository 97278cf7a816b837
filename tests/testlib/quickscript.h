// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QQuickWindow>
#include <QStringList>

#include <functional>
#include <memory>

QT_BEGIN_NAMESPACE
class QQuickItem;
QT_END_NAMESPACE

namespace TestLib {

/**
 * Operates a QML program as a script says, a step a line:
 *
 *     click save => save clicked
 *     drag slider 0.1,0.5 0.9,0.5 => slider moved
 *
 * What stands behind the arrow is what the step has to lead to, in a sorted list; nothing stands
 * for nothing. Lines that begin with # and empty ones are skipped.
 *
 * Things are called by their objectName, or as "text:Open" by the text that a visible item shows,
 * in whatever window; a pointer handler stands for the item that it is attached to. Places are
 * shares of an item's width and height; its centre where none is given.
 *
 *     click | rightClick | doubleClick | press | move | touch | hover THING [PLACE]
 *     release                                       what press has pressed
 *     drag | touchDrag THING PLACE PLACE
 *     pinch THING PLACE PLACE                       with two fingers, apart from the first place;
 * one of them ends near the second wheel THING DEGREES key KEYS as "Ctrl+S"; to the active window
 *     hold KEYS | let KEYS
 *     type TEXT
 *     compose TEXT | commit TEXT                    by input method
 *     focus THING                                   by the program
 *     call THING METHOD
 *     set THING PROPERTY VALUE                      by the program
 *     until THING PROPERTY VALUE                    waits for it
 */
class QuickScript {
public:
    /** @param takeResults what has happened since the last call */
    QuickScript(QQuickWindow& window, std::function<QStringList()> takeResults);

    /** Is called after each step, before the results are taken. */
    void setSettle(std::function<void()> settle) { m_settle = std::move(settle); }

    /** Runs all steps; a line for each that failed, with its number. */
    QStringList run(const QByteArray& script);
    int stepCount() const { return m_steps; }

private:
    QString runStep(const QString& step);
    QString runPointerStep(const QString& verb, const QStringList& words);
    QString runKeyStep(const QString& verb, const QString& text);
    QString runProgramStep(const QString& verb, const QStringList& words);
    void drag(QQuickWindow& window, QPoint from, QPoint to, bool isTouch);
    static void pinch(QQuickWindow& window, QPoint middle, QPoint end);
    QObject* object(const QString& name) const;
    QQuickItem* itemOf(const QString& name) const;
    QPoint place(const QStringList& words, int index) const;

    QQuickWindow& m_window;
    std::function<QStringList()> m_takeResults;
    std::function<void()> m_settle;
    QPointer<QQuickWindow> m_pressedWindow;
    QPoint m_pressed;
    int m_steps = 0;
};

} // namespace TestLib
