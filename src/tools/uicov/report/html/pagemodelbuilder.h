// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "report/html/pagemodel.h"

#include <QHash>
#include <QImage>

namespace Uicov::Report::Html {

class Appearances;

/**
 * Makes a page's model of what was collected: numbers windows and nodes in the order in which they
 * are shown, and finds for each element where it can be seen, or why it cannot. Used once.
 */
class PageModelBuilder {
public:
    /** Both outlive this. */
    PageModelBuilder(const Coverage::CoverageTree& tree, const Appearances& appearances);

    /** @param model what PageSummary fills in stays as it is */
    void build(PageModel& model);

private:
    bool hasIgnored(Coverage::WindowId window) const;
    void addWindow(Coverage::WindowId treeNode, const Coverage::CoverageTree::Totals& totals);
    void addNode(Coverage::NodeId treeNode, int window);
    void addSurface(Coverage::NodeId treeNode, int window);
    void linkMenus(const PageModel::Window& window);
    void linkOpeners();
    void addTotals(const PageModel::Window& window);
    void placeNodes(const PageModel::Window& window);
    void place(PageModel::Node& node, Coverage::NodeId treeNode);
    void compareOwnPicture(PageModel::Node& node, const QByteArray& png);
    const QImage& imageOf(const PageModel::Surface& surface);
    PageModel::PictureId pictureIdOf(const QByteArray& png);

    const Coverage::CoverageTree& m_tree;
    const Appearances& m_appearances;
    PageModel* m_model = nullptr;
    /** The page's numbers by the tree's. */
    QHash<Coverage::NodeId, int> m_numbers;
    /** The tree's numbers by the page's. */
    QVector<Coverage::NodeId> m_treeNodes;
    QHash<Coverage::NodeId, PageModel::SurfaceId> m_surfaces;
    QHash<QByteArray, PageModel::PictureId> m_pictures;
    PageModel::PictureId m_imagePicture = PageModel::PictureId::None;
    QImage m_image;
};

} // namespace Uicov::Report::Html
