#pragma once

#include "coverage/coveragetree.h"
#include "coverage/gatekeeper.h"
#include "report/html/runhistory.h"

#include <QByteArray>
#include <QMap>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

namespace Uicov::Report::Html {

/**
 * All that a page shows, before it has a form: the readers' own numbering, in which every list is
 * in its final order. A value.
 */
struct PageModel {
    struct Picture {
        QByteArray png;
        /** As it was recorded. */
        QSize size;
        /** Smaller than it was recorded. */
        bool isReduced = false;
    };

    /** Why an element is on no picture. */
    enum class Apart { None, NeverPlaced, ElsewhereThen, NoSize, Outside, Hidden };

    /** A node of the tree; one that is not countable is there as a step of the keys below it. */
    struct Node {
        /** Index of the node above; -1 for a window. */
        int above = -1;
        Runs::ElementKey::Step step;
        /** Shown as an element, counted or not. */
        bool isListed() const { return isCountable || ignoredBy >= 0; }

        /** In the numbers. */
        bool isCountable = false;
        /** Index of the rule that leaves it out of the numbers; -1 for none. */
        int ignoredBy = -1;
        Coverage::State state = Coverage::State::Missed;
        bool isUnopenedMenu = false;
        QString className;
        /** As the application had it last. */
        QString text;
        Coverage::Events events;
        /** Index of the surface that it lies on; -1 for none. */
        int surface = -1;
        /** In the coordinates of the surface; only when it can be seen on it. */
        std::optional<QRect> place;
        Apart apart = Apart::None;
        /** Index of its own picture, where that differs from what the surface has there; else -1.
         */
        int picture = -1;
        /** Index of the menu that it opens; -1 for none. */
        int opens = -1;
    };

    /** The window itself, or a menu of it. */
    struct Surface {
        int window = -1;
        int node = -1;
        /** Index of the node that opens it; -1 for the window. */
        int opener = -1;
        QRect bounds;
        /** Index; -1 when there is none, so that only places can be drawn. */
        int picture = -1;
    };

    struct Window {
        QString application;
        /** Index of its node, which all below follow up to lastNode. */
        int node = -1;
        int lastNode = -1;
        Coverage::CoverageTree::Totals totals;
        /** Index of the window that it belongs to, as a dialog does; -1 for none. */
        int over = -1;
        /** Indices, the window itself first. */
        QVector<int> surfaces;
    };

    /** A rule that leaves elements out of the numbers. */
    struct Rule {
        QString text;
        QString why;
        /** Name and line of the configuration file. */
        QString where;
        int elements = 0;
        /** Those of them that were used. */
        int usedElements = 0;
    };

    QString title;
    /** Digits behind the point of percentages. */
    int precision = 0;
    /** Of runs of the controls extension: other words, and views besides. */
    bool isOfControls = false;
    Coverage::CoverageTree::Totals totals;
    /** What has to be known before the numbers are believed. */
    QStringList warnings;
    QStringList notes;
    QVector<Coverage::GateResult> gates;
    QVector<Rule> rules;
    /** By standard type: the events that all have to happen for "used". */
    QMap<QString, QStringList> criteria;
    QStringList contexts;
    QVector<RunHistory::Row> runs;
    /** The one with the most that was missed first; those with nothing that counts last. */
    QVector<Window> windows;
    QVector<Surface> surfaces;
    QVector<Node> nodes;
    QVector<Picture> pictures;
};

} // namespace Uicov::Report::Html
