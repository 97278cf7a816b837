// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "report/html/pagemodel.h"
#include "report/html/viewsights.h"

#include <QHash>
#include <QImage>

#include <functional>

namespace Uicov::Report::Html {

/**
 * Places the controls of one window on the pictures of its views: each on the newest that shows it,
 * which makes a surface of its own of an older picture that is still needed. Finds which pages a
 * picture of what is around them shows. Used once a window.
 */
class ViewPlacer {
public:
    using PictureOf = std::function<PageModel::PictureId(const QByteArray& png)>;

    /**
     * @param model     has the window's nodes, and a surface for each of its views
     * @param treeNodes by index of the node
     * @param pictureOf gives a picture a number in the model
     */
    ViewPlacer(PageModel& model, const ViewSights& sights,
               const QVector<Coverage::NodeId>& treeNodes, PictureOf pictureOf);

    void place(int window);

private:
    using SurfaceId = PageModel::SurfaceId;

    void addPictures();
    void addOlderPictures();
    void placeNode(PageModel::Node& node, const QVector<ViewSights::Sight>& sights);
    PageModel::Member memberOf(const ViewSights::Sight& sight, SurfaceId home) const;
    SurfaceId surfaceOf(SurfaceId home, const QByteArray& picture) const;
    QRect placesOn(SurfaceId home) const;
    void findShownPages(SurfaceId around);
    double likeness(const PageModel::Surface& around, const PageModel::Surface& page);
    const QImage& imageOf(PageModel::PictureId picture);

    PageModel& m_model;
    const ViewSights& m_sights;
    const QVector<Coverage::NodeId>& m_treeNodes;
    PictureOf m_pictureOf;
    int m_window = -1;
    /** By view and hash of the picture. */
    QHash<QPair<SurfaceId, QByteArray>, SurfaceId> m_surfaces;
    QHash<PageModel::PictureId, QImage> m_images;
};

} // namespace Uicov::Report::Html
