// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/pagemodelbuilder.h"

#include "base/percentage.h"
#include "base/sha256.h"
#include "report/html/appearances.h"
#include "report/html/picturefit.h"
#include "report/html/viewplacer.h"

#include <algorithm>

namespace Uicov::Report::Html {

using Coverage::CoverageTree;
using Coverage::NodeId;
using Coverage::WindowId;
using Apart = PageModel::Apart;
using PictureId = PageModel::PictureId;
using SurfaceId = PageModel::SurfaceId;

namespace {

struct CountedWindow {
    WindowId node;
    CoverageTree::Totals totals;
};

bool missesMore(const CountedWindow& a, const CountedWindow& b) {
    if ((a.totals.elements == 0) != (b.totals.elements == 0)) {
        return b.totals.elements == 0;
    }
    return a.totals.missed != b.totals.missed ? a.totals.missed > b.totals.missed
                                              : a.totals.shown > b.totals.shown;
}

/** The worst first: the one with the least share of used controls, then with the most unused. */
bool isWorse(const CountedWindow& a, const CountedWindow& b) {
    if ((a.totals.elements == 0) != (b.totals.elements == 0)) {
        return b.totals.elements == 0;
    }
    const double first = Base::exactPercent(a.totals.used, a.totals.elements);
    const double second = Base::exactPercent(b.totals.used, b.totals.elements);
    return first != second ? first < second
                           : a.totals.elements - a.totals.used > b.totals.elements - b.totals.used;
}

QRect boundsOf(const Appearances::Surface& surface) {
    QRect bounds = surface.bounds;
    if (bounds.isEmpty()) {
        // Nobody told how large the window is; it is at least as large as what is in it.
        for (const QRect& place : surface.places) {
            bounds |= place;
        }
    }
    return bounds;
}

} // namespace

PageModelBuilder::PageModelBuilder(const CoverageTree& tree, const Appearances& appearances)
    : m_tree(tree)
    , m_appearances(appearances) {}

void PageModelBuilder::build(PageModel& model) {
    m_model = &model;
    model.contexts = m_tree.contexts();
    std::vector<CountedWindow> windows;
    const QList<WindowId> all = m_tree.windows();
    for (const WindowId window : all) {
        const CoverageTree::Totals totals = m_tree.totalsOf(window);
        model.totals += totals;
        model.isOfControls = m_tree.isOfControls();
        if (totals.elements > 0 || totals.views > 0 || hasIgnored(window)) {
            windows.push_back({window, totals});
        }
    }
    std::stable_sort(windows.begin(), windows.end(), model.isOfControls ? isWorse : missesMore);
    for (const CountedWindow& window : windows) {
        addWindow(window.node, window.totals);
    }
    QHash<NodeId, int> indices;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        indices.insert(windows[i].node, static_cast<int>(i));
    }
    for (int i = 0; i < model.windows.size(); ++i) {
        const NodeId owner = m_appearances.owner(windows[static_cast<std::size_t>(i)].node);
        model.windows[i].over = indices.value(owner, -1);
    }
    if (model.isOfControls) {
        linkOpeners();
    }
}

bool PageModelBuilder::hasIgnored(WindowId window) const {
    const std::vector<NodeId> nodes = m_tree.nodesOf(window);
    return std::any_of(nodes.cbegin(), nodes.cend(), [this](NodeId node) {
        return m_tree.node(node).ignoredBy != Coverage::RuleId::None;
    });
}

void PageModelBuilder::addWindow(WindowId treeNode, const CoverageTree::Totals& totals) {
    PageModel::Window window;
    window.application = m_tree.node(treeNode).application;
    window.node = m_model->nodes.size();
    window.totals = totals;
    const int index = m_model->windows.size();
    m_model->windows.append(window);
    for (const NodeId node : m_tree.nodesOf(treeNode)) {
        addNode(node, index);
    }
    PageModel::Window& added = m_model->windows.last();
    added.lastNode = m_model->nodes.size() - 1;
    if (m_tree.isOfControls()) {
        ViewPlacer(*m_model, m_appearances.sights(), m_treeNodes, [this](const QByteArray& png) {
            return pictureIdOf(png);
        }).place(index);
    } else {
        linkMenus(added);
        placeNodes(added);
    }
    addTotals(m_model->windows.at(index));
}

void PageModelBuilder::addNode(NodeId treeNode, int window) {
    const CoverageTree::Node& source = m_tree.node(treeNode);
    const Appearances::Element appearance = m_appearances.element(treeNode);
    const int number = m_model->nodes.size();
    m_numbers.insert(treeNode, number);
    m_treeNodes.append(treeNode);
    PageModel::Node node;
    node.above = source.parent == NodeId::None ? -1 : m_numbers.value(source.parent);
    node.step = source.step;
    node.isCountable = m_tree.counts(treeNode);
    node.ignoredBy = source.isCountable ? source.ignoredBy : Coverage::RuleId::None;
    node.state = m_tree.stateOf(treeNode);
    node.isView = source.role == CoverageTree::Node::Role::View;
    const bool isUnseenView = node.isView && !source.wasSeen;
    node.isUnopenedMenu = (source.isMenu && !source.isOpenedMenu) || isUnseenView;
    node.isCountable = node.isCountable && node.state != Coverage::State::Unavailable;
    node.isDisabled = appearance.isDisabled;
    node.ways = source.ways;
    node.usedWays = source.usedWays;
    node.groupName = appearance.group;
    node.members = source.members;
    node.usedMembers = source.usedMembers;
    node.uses = m_appearances.times().uses(treeNode);
    node.className = appearance.className;
    node.text = appearance.text;
    node.events = source.events;
    m_model->nodes.append(node);
    if (source.parent == NodeId::None || (source.isMenu && source.isOpenedMenu) || node.isView) {
        addSurface(treeNode, window);
    }
    m_model->nodes.last().home =
        m_surfaces.value(Appearances::surfaceOf(m_tree, treeNode), SurfaceId::None);
}

void PageModelBuilder::addSurface(NodeId treeNode, int window) {
    PageModel::Surface surface;
    surface.window = window;
    surface.node = m_numbers.value(treeNode);
    if (const Appearances::Surface* const seen = m_appearances.surface(treeNode)) {
        surface.bounds = boundsOf(*seen);
        surface.picture = seen->png.isEmpty() ? PictureId::None : pictureIdOf(seen->png);
    }
    const NodeId above = m_tree.node(treeNode).parent;
    surface.above = above == NodeId::None
                        ? SurfaceId::None
                        : m_surfaces.value(Appearances::surfaceOf(m_tree, above), SurfaceId::None);
    surface.isSeen = !m_model->nodes.at(surface.node).isUnopenedMenu;
    const auto id = static_cast<SurfaceId>(m_model->surfaces.size());
    m_surfaces.insert(treeNode, id);
    m_model->windows[window].surfaces.append(id);
    m_model->surfaces.append(surface);
}

/** What a menu hangs on opens it; one that hangs on the window itself is opened by nothing known.
 */
void PageModelBuilder::linkMenus(const PageModel::Window& window) {
    for (const SurfaceId id : window.surfaces) {
        PageModel::Surface& surface = m_model->surface(id);
        const int opener = m_model->nodes.at(surface.node).above;
        if (opener >= 0 && m_model->nodes.at(opener).above >= 0) {
            surface.opener = opener;
            m_model->nodes[opener].opens = id;
        }
    }
}

/** Views are told by the key of what brings them up, which may be in another window. */
void PageModelBuilder::linkOpeners() {
    QHash<QString, int> openers;
    for (const PageModel::Surface& surface : qAsConst(m_model->surfaces)) {
        const QString key = m_tree.node(m_treeNodes.at(surface.node)).openedBy;
        if (!key.isEmpty()) {
            openers.insert(key, -1);
        }
    }
    if (openers.isEmpty()) {
        return;
    }
    QStringList keys;
    for (int i = 0; i < m_model->nodes.size(); ++i) {
        const PageModel::Node& node = m_model->nodes.at(i);
        const QString above =
            node.above < 0 ? QString() : keys.at(node.above) + Runs::ElementKey::separator();
        keys.append(above + node.step.toString());
        const auto opener = openers.find(keys.last());
        if (opener != openers.end()) {
            *opener = i;
        }
    }
    for (int i = 0; i < m_model->surfaces.size(); ++i) {
        PageModel::Surface& surface = m_model->surfaces[i];
        surface.opener = openers.value(m_tree.node(m_treeNodes.at(surface.node)).openedBy, -1);
        if (surface.opener >= 0 && !surface.isOlder) {
            m_model->nodes[surface.opener].opens = static_cast<SurfaceId>(i);
        }
    }
}

void PageModelBuilder::addTotals(const PageModel::Window& window) {
    for (int i = window.node; i <= window.lastNode; ++i) {
        const PageModel::Node& node = m_model->nodes.at(i);
        if (node.home == SurfaceId::None || node.isView) {
            continue;
        }
        CoverageTree::Totals& totals = m_model->surface(node.home).totals;
        if (node.isUnavailable()) {
            ++totals.unavailable;
        } else if (node.isCountable) {
            ++totals.elements;
            ++(node.state == Coverage::State::Used    ? totals.used
               : node.state == Coverage::State::Shown ? totals.shown
                                                      : totals.missed);
        }
    }
}

void PageModelBuilder::placeNodes(const PageModel::Window& window) {
    for (int i = window.node; i <= window.lastNode; ++i) {
        if (m_model->nodes.at(i).isListed()) {
            place(m_model->nodes[i], m_treeNodes.at(i));
        }
    }
}

void PageModelBuilder::place(PageModel::Node& node, NodeId treeNode) {
    const NodeId surfaceNode = Appearances::surfaceOf(m_tree, treeNode);
    const Appearances::Element appearance = m_appearances.element(treeNode);
    const Appearances::Surface* const seen = m_appearances.surface(surfaceNode);
    const SurfaceId surface = m_surfaces.value(surfaceNode, SurfaceId::None);
    const QRect bounds = surface == SurfaceId::None ? QRect() : m_model->surface(surface).bounds;
    const auto known =
        seen == nullptr ? QHash<NodeId, QRect>::const_iterator() : seen->places.constFind(treeNode);
    const bool isPlaced = seen != nullptr && known != seen->places.cend();
    const bool isSurface = surfaceNode == treeNode && !bounds.isEmpty();
    if (!isPlaced && !isSurface) {
        node.apart = appearance.hasPlace ? Apart::ElsewhereThen : Apart::NeverPlaced;
    } else if (const QRect rectangle = isSurface ? bounds : *known; rectangle.isEmpty()) {
        node.apart = Apart::NoSize;
    } else if (!rectangle.intersects(bounds)) {
        node.apart = Apart::Outside;
    } else {
        node.surface = surface;
        node.place = rectangle;
    }
    if (!isSurface && !appearance.png.isEmpty()) {
        compareOwnPicture(node, appearance.png);
    }
}

void PageModelBuilder::compareOwnPicture(PageModel::Node& node, const QByteArray& png) {
    if (node.place && m_model->surface(node.surface).picture != PictureId::None) {
        const PageModel::Surface& surface = m_model->surface(node.surface);
        const QImage& image = imageOf(surface);
        const double scale = double(image.width()) / surface.bounds.width();
        const QRect place = node.place->translated(-surface.bounds.topLeft());
        const QRect pixels(qRound(place.x() * scale), qRound(place.y() * scale),
                           qRound(place.width() * scale), qRound(place.height() * scale));
        const PictureFit fit(image, QImage::fromData(png, "PNG"), pixels);
        if (fit.isSame()) {
            return;
        }
        // An entry under the mouse has other colours for everything; nothing ever hides one.
        if (fit.isOther() && node.step.kind != QLatin1String("MenuItem")) {
            node.surface = SurfaceId::None;
            node.place.reset();
            node.apart = Apart::Hidden;
        }
    }
    node.picture = pictureIdOf(png);
}

const QImage& PageModelBuilder::imageOf(const PageModel::Surface& surface) {
    if (m_imagePicture != surface.picture) {
        m_imagePicture = surface.picture;
        m_image = QImage::fromData(m_model->picture(surface.picture).png, "PNG");
    }
    return m_image;
}

PictureId PageModelBuilder::pictureIdOf(const QByteArray& png) {
    const QByteArray hash = Base::Sha256::of(png);
    const auto known = m_pictures.constFind(hash);
    if (known != m_pictures.cend()) {
        return *known;
    }
    const QImage image = QImage::fromData(png, "PNG");
    if (image.isNull()) {
        return PictureId::None; // nothing to show, and no reason to fail
    }
    const auto id = static_cast<PictureId>(m_model->pictures.size());
    m_model->pictures.append({png, image.size(), false});
    m_pictures.insert(hash, id);
    return id;
}

} // namespace Uicov::Report::Html
