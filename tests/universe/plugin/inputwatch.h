// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QObject>
#include <QPair>
#include <QPointer>
#include <QSet>

class Journal;

/**
 * Notes which objects input is delivered to and how these, and what they are parts of, react. It
 * sees deliveries as any event filter of an application does, so what the extension believes has no
 * influence on it.
 */
class InputWatch : public QObject {
    Q_OBJECT

public:
    /** @param journal not owned, outlives this */
    explicit InputWatch(Journal& journal);

    /** Notes the object's reactions from now on; more than once changes nothing. */
    void watch(QObject* object);
    /** A reaction that repeats itself is noted once in each step. */
    void beginStep() { m_noted.clear(); }

    bool eventFilter(QObject* receiver, QEvent* event) override;
    bool event(QEvent* event) override;

private Q_SLOTS:
    void note();

private:
    void watchSignal(QObject* sender, const char* name);
    void watchSelection(QObject* view);
    void watchActions(QObject* receiver);

    Journal& m_journal;
    /** Until what was queued together with the last input has been delivered. */
    bool m_isDelivering = false;
    QSet<QObject*> m_watched;
    /** Selection models and the views that they are of. */
    QHash<QObject*, QPointer<QObject>> m_viewOf;
    QSet<QPair<QObject*, int>> m_noted;
};
