// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

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
    /** Indices of surfaces and pictures, each a type of its own. */
    enum class SurfaceId : int { None = -1 };
    enum class PictureId : int { None = -1 };

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
        bool isListed() const { return isCountable || ignoredBy != Coverage::RuleId::None; }

        /** In the numbers. */
        bool isCountable = false;
        /** The rule that leaves it out of the numbers. */
        Coverage::RuleId ignoredBy = Coverage::RuleId::None;
        Coverage::State state = Coverage::State::Missed;
        bool isUnopenedMenu = false;
        QString className;
        /** As the application had it last. */
        QString text;
        Coverage::Events events;
        /** The surface that it lies on. */
        SurfaceId surface = SurfaceId::None;
        /** In the coordinates of the surface; only when it can be seen on it. */
        std::optional<QRect> place;
        Apart apart = Apart::None;
        /** Its own picture, where that differs from what the surface has there. */
        PictureId picture = PictureId::None;
        /** The menu that it opens. */
        SurfaceId opens = SurfaceId::None;
    };

    /** The window itself, or a menu of it. */
    struct Surface {
        int window = -1;
        int node = -1;
        /** Index of the node that opens it; -1 for the window. */
        int opener = -1;
        QRect bounds;
        /** None when only places can be drawn. */
        PictureId picture = PictureId::None;
    };

    struct Window {
        QString application;
        /** Index of its node, which all below follow up to lastNode. */
        int node = -1;
        int lastNode = -1;
        Coverage::CoverageTree::Totals totals;
        /** Index of the window that it belongs to, as a dialog does; -1 for none. */
        int over = -1;
        /** The window itself first. */
        QVector<SurfaceId> surfaces;
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

    const Surface& surface(SurfaceId id) const { return surfaces.at(static_cast<int>(id)); }
    Surface& surface(SurfaceId id) { return surfaces[static_cast<int>(id)]; }
    const Picture& picture(PictureId id) const { return pictures.at(static_cast<int>(id)); }
};

} // namespace Uicov::Report::Html
