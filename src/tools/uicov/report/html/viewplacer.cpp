// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/viewplacer.h"

#include "report/html/picturefit.h"

#include <algorithm>
#include <utility>

namespace Uicov::Report::Html {

using Apart = PageModel::Apart;
using PictureId = PageModel::PictureId;
using Sight = ViewSights::Sight;

namespace {

/** Of older pictures of one view: those that show the most of what the newest does not. */
constexpr int mostOlderPictures = 6;
/** From this likeness on, of 1 for the same, a picture shows a page. */
constexpr double leastLikeness = 0.6;
/** Of a narrower part nobody can tell. */
constexpr int leastWidth = 32;
/** Pages are compared at this width; text and edges are still told apart. */
constexpr int comparedWidth = 240;

} // namespace

ViewPlacer::ViewPlacer(PageModel& model, const ViewSights& sights,
                       const QVector<Coverage::NodeId>& treeNodes, PictureOf pictureOf)
    : m_model(model)
    , m_sights(sights)
    , m_treeNodes(treeNodes)
    , m_pictureOf(std::move(pictureOf)) {}

void ViewPlacer::place(int window) {
    m_window = window;
    addPictures();
    addOlderPictures();
    const PageModel::Window of = m_model.windows.at(window);
    for (int i = of.node; i <= of.lastNode; ++i) {
        PageModel::Node& node = m_model.nodes[i];
        if (!node.isView) {
            placeNode(node, m_sights.sights(m_treeNodes.at(i)));
        }
    }
    for (const SurfaceId id : of.surfaces) {
        PageModel::Surface& surface = m_model.surface(id);
        if (surface.bounds.isEmpty()) {
            surface.bounds = placesOn(id);
        }
    }
    for (const SurfaceId id : qAsConst(m_model.windows[window].surfaces)) {
        findShownPages(id);
    }
}

void ViewPlacer::addPictures() {
    const PageModel::Window& window = m_model.windows.at(m_window);
    for (const SurfaceId id : window.surfaces) {
        PageModel::Surface& surface = m_model.surface(id);
        const auto view = m_sights.view(m_treeNodes.at(surface.node));
        if (!view) {
            continue;
        }
        m_surfaces.insert(qMakePair(id, view->picture), id);
        const ViewSights::Picture* const picture = m_sights.picture(view->picture);
        surface.bounds = picture == nullptr ? view->place : picture->bounds;
        surface.picture = picture == nullptr ? PictureId::None : m_pictureOf(picture->png);
    }
}

void ViewPlacer::addOlderPictures() {
    PageModel::Window& window = m_model.windows[m_window];
    QHash<SurfaceId, QHash<QByteArray, int>> older;
    for (int i = window.node; i <= window.lastNode; ++i) {
        const SurfaceId home = m_model.nodes.at(i).home;
        const QVector<Sight> sights = m_sights.sights(m_treeNodes.at(i));
        for (const Sight& sight : sights) {
            if (!sight.picture.isEmpty() && !m_surfaces.contains(qMakePair(home, sight.picture))) {
                ++older[home][sight.picture];
            }
        }
    }
    QVector<SurfaceId> surfaces;
    for (const SurfaceId home : qAsConst(window.surfaces)) {
        surfaces.append(home);
        const QHash<QByteArray, int> counts = older.value(home);
        QList<QByteArray> pictures = counts.keys();
        std::sort(pictures.begin(), pictures.end(), [&](const QByteArray& a, const QByteArray& b) {
            return counts.value(a) != counts.value(b) ? counts.value(a) > counts.value(b) : a < b;
        });
        for (const QByteArray& hash : pictures.mid(0, mostOlderPictures)) {
            const ViewSights::Picture* const picture = m_sights.picture(hash);
            if (picture == nullptr) {
                continue;
            }
            PageModel::Surface surface = m_model.surface(home);
            surface.isOlder = true;
            surface.bounds = picture->bounds;
            surface.picture = m_pictureOf(picture->png);
            const auto id = static_cast<SurfaceId>(m_model.surfaces.size());
            m_model.surfaces.append(surface);
            m_surfaces.insert(qMakePair(home, hash), id);
            surfaces.append(id);
        }
    }
    window.surfaces = surfaces;
}

ViewPlacer::SurfaceId ViewPlacer::surfaceOf(SurfaceId home, const QByteArray& picture) const {
    return m_surfaces.value(qMakePair(home, picture), SurfaceId::None);
}

PageModel::Member ViewPlacer::memberOf(const Sight& sight, SurfaceId home) const {
    PageModel::Member member;
    member.name = sight.name;
    member.isUsed = sight.isUsed;
    const SurfaceId surface = surfaceOf(home, sight.picture);
    if (surface == SurfaceId::None || sight.place.isEmpty()) {
        return member;
    }
    const QRect bounds = m_model.surface(surface).bounds;
    if (bounds.isEmpty() || sight.place.intersects(bounds)) {
        member.surface = surface;
        member.place = sight.place;
    }
    return member;
}

void ViewPlacer::placeNode(PageModel::Node& node, const QVector<Sight>& sights) {
    if (node.home == SurfaceId::None) {
        return;
    }
    QVector<PageModel::Member> members;
    for (const Sight& sight : sights) {
        members.append(memberOf(sight, node.home));
    }
    const auto placed = std::find_if(members.cbegin(), members.cend(),
                                     [](const PageModel::Member& member) { return member.place; });
    if (placed != members.cend()) {
        node.surface = placed->surface;
        node.place = placed->place;
    } else if (sights.isEmpty() || sights.first().place.isEmpty()) {
        node.apart = Apart::NeverPlaced;
    } else {
        const SurfaceId surface = surfaceOf(node.home, sights.first().picture);
        node.apart = surface == SurfaceId::None ? Apart::ElsewhereThen : Apart::Outside;
    }
    if (node.members > 0) {
        node.group = members;
    }
}

/** Where nobody told how large a view is, it is at least as large as what is in it. */
QRect ViewPlacer::placesOn(SurfaceId home) const {
    QRect bounds;
    const PageModel::Window& window = m_model.windows.at(m_window);
    for (int i = window.node; i <= window.lastNode; ++i) {
        const PageModel::Node& node = m_model.nodes.at(i);
        if (node.surface == home && node.place) {
            bounds |= *node.place;
        }
    }
    return bounds;
}

/** Of pages in the same place, the one that the picture is most like. */
void ViewPlacer::findShownPages(SurfaceId around) {
    PageModel::Surface& outer = m_model.surface(around);
    if (outer.picture == PictureId::None) {
        return;
    }
    struct Candidate {
        SurfaceId page;
        double likeness;
    };
    std::vector<Candidate> candidates;
    for (const SurfaceId id : qAsConst(m_model.windows[m_window].surfaces)) {
        const PageModel::Surface& page = m_model.surface(id);
        const bool isPage = page.above != SurfaceId::None && !outer.isOlder &&
                            page.above == around && page.picture != PictureId::None &&
                            m_model.nodes.at(page.node).step.kind == QLatin1String("Page");
        if (isPage && outer.bounds.contains(page.bounds) && page.bounds.width() >= leastWidth) {
            candidates.push_back({id, likeness(outer, page)});
        }
    }
    std::stable_sort(
        candidates.begin(), candidates.end(),
        [](const Candidate& a, const Candidate& b) { return a.likeness > b.likeness; });
    for (const Candidate& candidate : candidates) {
        const QRect bounds = m_model.surface(candidate.page).bounds;
        const bool isFree =
            std::none_of(outer.shows.cbegin(), outer.shows.cend(), [&](SurfaceId shown) {
                return m_model.surface(shown).bounds.intersects(bounds);
            });
        if (candidate.likeness >= leastLikeness && isFree) {
            outer.shows.append(candidate.page);
        }
    }
}

double ViewPlacer::likeness(const PageModel::Surface& around, const PageModel::Surface& page) {
    const QImage whole = imageOf(around.picture);
    const QImage own = imageOf(page.picture);
    const double scale = double(whole.width()) / around.bounds.width();
    const QRect place = page.bounds.translated(-around.bounds.topLeft());
    const QRect pixels(qRound(place.x() * scale), qRound(place.y() * scale), own.width(),
                       own.height());
    if (!whole.rect().contains(pixels)) {
        return 0;
    }
    const int width = qMin(comparedWidth, own.width());
    const QSize size(width, qMax(1, own.height() * width / own.width()));
    const QImage shown = whole.copy(pixels).scaled(size);
    return PictureFit(shown, own.scaled(size), shown.rect()).likeness();
}

const QImage& ViewPlacer::imageOf(PictureId picture) {
    QImage& image = m_images[picture];
    if (image.isNull()) {
        image = QImage::fromData(m_model.picture(picture).png, "PNG");
    }
    return image;
}

} // namespace Uicov::Report::Html
