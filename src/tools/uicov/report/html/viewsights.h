// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coveragetree.h"
#include "run/keywalk.h"

#include <QByteArray>
#include <QHash>
#include <QRect>
#include <QString>
#include <QVector>

#include <optional>
#include <vector>

namespace Uicov::Runs {
struct Run;
struct RunElement;
} // namespace Uicov::Runs

namespace Uicov::Report::Html {

/** Of a picture and the place of what it shows: the rectangle that the picture covers, in the
 * coordinates of the place, be it of a screen with several pixels a point. */
QRect picturedBounds(const QByteArray& png, const QRect& place);

/**
 * Where the controls of runs of the controls extension are to be seen: of each view its newest
 * picture, and of each control the newest picture of its view that shows it. Runs are added in
 * their order.
 */
class ViewSights {
public:
    /** A control, or one of several that are a group, as it was in one run. */
    struct Sight {
        /** What people call it. */
        QString name;
        bool isUsed = false;
        /** Hash of the picture that it is on; empty for none. */
        QByteArray picture;
        /** Empty when it is not known. */
        QRect place;
    };

    struct Picture {
        QByteArray png;
        /** What it shows, in the coordinates of the places on it. */
        QRect bounds;
    };

    struct View {
        /** Hash of the newest picture; empty for none. */
        QByteArray picture;
        /** As the view was told to lie; may be empty. */
        QRect place;
    };

    /** @param nodes the tree's node of each place */
    void add(const Runs::Run& run, const std::vector<Runs::KeyWalk::Place>& places,
             const std::vector<Coverage::NodeId>& nodes);

    /** Nothing when the node is no view that was met. */
    std::optional<View> view(Coverage::NodeId node) const;
    /** Empty when the node is no control that was met; of a group all members, up to a limit. */
    QVector<Sight> sights(Coverage::NodeId control) const { return m_sights.value(control); }
    /** Null when no such picture is needed. */
    const Picture* picture(const QByteArray& hash) const;

private:
    using Places = std::vector<Runs::KeyWalk::Place>;
    using Nodes = std::vector<Coverage::NodeId>;

    /** By view: the hash of the picture that it has in this run. */
    using PictureOfView = QHash<Coverage::NodeId, QByteArray>;

    PictureOfView addViews(const Runs::Run& run, const Places& places, const Nodes& nodes);
    void addSights(const Runs::Run& run, const Places& places, const Nodes& nodes,
                   const PictureOfView& pictures);
    Sight sightOf(const Runs::Run& run, const Runs::RunElement& control,
                  const Runs::RunElement& view);
    void addPicture(const Runs::Run& run, const QByteArray& hash, const Runs::RunElement& view);
    void dropUnneeded();

    QHash<Coverage::NodeId, QVector<Sight>> m_sights;
    QHash<Coverage::NodeId, View> m_views;
    QHash<QByteArray, Picture> m_pictures;
};

} // namespace Uicov::Report::Html
