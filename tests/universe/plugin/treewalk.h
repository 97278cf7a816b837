// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessible>
#include <QHash>
#include <QPair>
#include <QPointer>
#include <QRect>
#include <QVector>

QT_BEGIN_NAMESPACE
class QAccessibleInterface;
class QWindow;
QT_END_NAMESPACE

class Journal;

/**
 * Walks the accessibility trees of all windows, notes each node that is new, and keeps where those
 * are that can be operated now. It does not go into rows and cells: these are data.
 */
class TreeWalk {
public:
    /** What could be pressed at the time of the last walk. */
    struct Target {
        /** Number of the node. */
        int node = 0;
        /** On the screen. */
        QRect place;
        QPointer<QWindow> window;
        /** Its name says that it may close its window. */
        bool mayEnd = false;
    };

    /** @param journal not owned, outlives this */
    explicit TreeWalk(Journal& journal);

    void walk();
    const QVector<Target>& targets() const { return m_targets; }

private:
    struct Path {
        /** The last object on the way to the node. */
        QObject* object = nullptr;
        QWindow* window = nullptr;
        int depth = 0;
        bool isShown = true;
    };

    void visit(QAccessibleInterface& node, Path path);
    int note(QAccessibleInterface& node, QObject* object, bool isOwn);

    Journal& m_journal;
    QVector<Target> m_targets;
    /** Nodes by their objects, and those without by the object above them and what tells them
     * apart. */
    QHash<QPair<int, QString>, int> m_numbers;
    int m_lastNumber = 0;
};
