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
    bool hasIgnored(int window) const;
    void addWindow(int treeNode, const Coverage::CoverageTree::Totals& totals);
    void addNode(int treeNode, int window);
    void addSurface(int treeNode, int window);
    void linkMenus(const PageModel::Window& window);
    void placeNodes(const PageModel::Window& window);
    void place(PageModel::Node& node, int treeNode);
    void compareOwnPicture(PageModel::Node& node, const QByteArray& png);
    const QImage& imageOf(const PageModel::Surface& surface);
    int pictureIndex(const QByteArray& png);

    const Coverage::CoverageTree& m_tree;
    const Appearances& m_appearances;
    PageModel* m_model = nullptr;
    /** The page's numbers by the tree's. */
    QHash<int, int> m_numbers;
    /** The tree's numbers by the page's. */
    QVector<int> m_treeNodes;
    QHash<int, int> m_surfaces;
    QHash<QByteArray, int> m_pictures;
    int m_imagePicture = -1;
    QImage m_image;
};

} // namespace Uicov::Report::Html
