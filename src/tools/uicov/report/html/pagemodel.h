// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coveragetree.h"
#include "coverage/gatekeeper.h"
#include "report/html/runhistory.h"
#include "report/html/usetimes.h"

#include <QByteArray>
#include <QHash>
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

    /** One of what a view, a repeater or a loader makes again and again. */
    struct Member {
        QString name;
        bool isUsed = false;
        /** Where it is outlined; None and nothing when it is on no picture. */
        SurfaceId surface = SurfaceId::None;
        std::optional<QRect> place;
    };

    /** A node of the tree; one that is not countable is there as a step of the keys below it. */
    struct Node {
        /** Index of the node above; -1 for a window. */
        int above = -1;
        Runs::ElementKey::Step step;
        /** Shown as an element, counted or not. */
        bool isListed() const {
            return isCountable || isUnavailable() || ignoredBy != Coverage::RuleId::None;
        }
        /** Never enabled in any run, and so in none of the numbers. */
        bool isUnavailable() const {
            return state == Coverage::State::Unavailable && ignoredBy == Coverage::RuleId::None &&
                   !isView;
        }

        /** In the numbers. */
        bool isCountable = false;
        /** The rule that leaves it out of the numbers. */
        Coverage::RuleId ignoredBy = Coverage::RuleId::None;
        Coverage::State state = Coverage::State::Missed;
        bool isUnopenedMenu = false;
        /** Has to be brought up before what is in it can be reached; in no number of controls. */
        bool isView = false;
        /** It could not be operated at the end of the last run that has it. */
        bool isDisabled = false;
        /** Of a command: the ways in which it can be reached, and those in which it was. */
        QStringList ways;
        QStringList usedWays;
        /** Of a group: its name, how many there were at most in a run, how many of them were used,
         * and they themselves, up to a limit, as in the newest run that pictures them. */
        QString groupName;
        int members = 0;
        int usedMembers = 0;
        QVector<Member> group;
        /** When it was used; of a view, when it was seen. */
        QVector<UseTimes::Use> uses;
        QString className;
        /** As the application had it last. */
        QString text;
        Coverage::Events events;
        /** That of the view, window or menu that it belongs to; of a view its own. */
        SurfaceId home = SurfaceId::None;
        /** The surface that it is outlined on. */
        SurfaceId surface = SurfaceId::None;
        /** In the coordinates of the surface; only when it can be seen on it. */
        std::optional<QRect> place;
        Apart apart = Apart::None;
        /** Its own picture, where that differs from what the surface has there. */
        PictureId picture = PictureId::None;
        /** The menu that it opens. */
        SurfaceId opens = SurfaceId::None;
    };

    /** The window itself, or a menu, a page or another view of it. */
    struct Surface {
        int window = -1;
        int node = -1;
        /** Index of the node that opens it, which may be of another window; -1 for none known. */
        int opener = -1;
        /** That of the view around it; None for the window. */
        SurfaceId above = SurfaceId::None;
        /** A person could see it in some run. */
        bool isSeen = true;
        /** An older picture of the same view, for what the newest does not show. */
        bool isOlder = false;
        /** Pages that can be seen on its picture. */
        QVector<SurfaceId> shows;
        /** Of what belongs to this view and to no view in it. */
        Coverage::CoverageTree::Totals totals;
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

inline uint qHash(PageModel::SurfaceId id, uint seed = 0) {
    return ::qHash(static_cast<int>(id), seed);
}

inline uint qHash(PageModel::PictureId id, uint seed = 0) {
    return ::qHash(static_cast<int>(id), seed);
}

} // namespace Uicov::Report::Html
