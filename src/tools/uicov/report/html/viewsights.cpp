// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/viewsights.h"

#include "coverage/coveragerules.h"
#include "run/controlnames.h"
#include "run/elementkinds.h"
#include "run/run.h"

#include <QBuffer>
#include <QImageReader>
#include <QSet>

#include <algorithm>

namespace Uicov::Report::Html {

using Coverage::NodeId;
using Runs::RunElement;

namespace {

/** More members of a group nobody reads one by one. */
constexpr int mostMembers = 300;

QSize sizeOf(const QByteArray& png) {
    QBuffer buffer;
    buffer.setData(png);
    return QImageReader(&buffer, "png").size();
}

/** Whether the picture is one of that rectangle, be it of a screen with several pixels a point. */
bool shows(const QSize& picture, const QRect& place) {
    if (place.isEmpty()) {
        return false;
    }
    const double across = double(picture.width()) / place.width();
    const double down = double(picture.height()) / place.height();
    return across >= 1 && qAbs(across - down) < 0.02;
}

bool wasUsed(const RunElement& control) {
    return std::any_of(control.hits.cbegin(), control.hits.cend(),
                       [](const Runs::Hit& hit) { return hit.event != Coverage::seenEvent(); });
}

bool isView(const RunElement& element, const Runs::KeyWalk::Place& place) {
    return place.above < 0 || Runs::isViewType(element.type);
}

bool isOn(const QVector<ViewSights::Sight>& sights, const QByteArray& picture) {
    return std::any_of(sights.cbegin(), sights.cend(),
                       [&](const ViewSights::Sight& sight) { return sight.picture == picture; });
}

bool isPictured(const QVector<ViewSights::Sight>& sights) {
    return std::any_of(sights.cbegin(), sights.cend(),
                       [](const ViewSights::Sight& sight) { return !sight.picture.isEmpty(); });
}

} // namespace

QRect picturedBounds(const QByteArray& png, const QRect& place) {
    const QSize size = png.isEmpty() ? QSize() : sizeOf(png);
    return size.isEmpty() || shows(size, place) ? place : QRect(place.topLeft(), size);
}

void ViewSights::add(const Runs::Run& run, const Places& places, const Nodes& nodes) {
    addSights(run, places, nodes, addViews(run, places, nodes));
    dropUnneeded();
}

/** Of several instances of a view in a run, the one on whose picture most is to be seen, then the
 * later one. */
ViewSights::PictureOfView ViewSights::addViews(const Runs::Run& run, const Places& places,
                                               const Nodes& nodes) {
    QHash<QByteArray, int> sightsOn;
    for (const Runs::KeyWalk::Place& place : places) {
        ++sightsOn[run.element(place.element).picture];
    }
    PictureOfView pictures;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const RunElement& element = run.element(places[i].element);
        if (!isView(element, places[i])) {
            continue;
        }
        const QByteArray hash =
            run.pictures.contains(element.picture) ? element.picture : QByteArray();
        const auto inThisRun = pictures.constFind(nodes[i]);
        View& view = m_views[nodes[i]];
        const bool isBetter =
            view.picture.isEmpty() || (!hash.isEmpty() && (inThisRun == pictures.cend() ||
                                                           sightsOn[hash] >= sightsOn[*inThisRun]));
        if (isBetter) {
            view = {hash, element.place.value_or(view.place)};
            pictures.insert(nodes[i], hash);
        }
        if (!hash.isEmpty()) {
            addPicture(run, hash, element);
        }
    }
    return pictures;
}

ViewSights::Sight ViewSights::sightOf(const Runs::Run& run, const RunElement& control,
                                      const RunElement& view) {
    const bool hasPicture = run.pictures.contains(control.picture);
    if (hasPicture) {
        addPicture(run, control.picture, view);
    }
    return {Runs::ControlNames::captionOf(control), wasUsed(control),
            hasPicture ? control.picture : QByteArray(), control.place.value_or(QRect())};
}

/** From the instance of the view that has the view's picture, as far as that has the control. */
void ViewSights::addSights(const Runs::Run& run, const Places& places, const Nodes& nodes,
                           const PictureOfView& pictures) {
    struct Found {
        /** Index of the place of the view that it is of. */
        std::size_t view;
        QVector<Sight> sights;
    };
    QHash<NodeId, Found> found;
    std::vector<std::size_t> viewOf(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        const RunElement& element = run.element(places[i].element);
        if (isView(element, places[i])) {
            viewOf[i] = i;
            continue;
        }
        const std::size_t view = viewOf[static_cast<std::size_t>(places[i].above)];
        viewOf[i] = view;
        const Sight sight = sightOf(run, element, run.element(places[view].element));
        const auto known = found.find(nodes[i]);
        if (known == found.end()) {
            found.insert(nodes[i], {view, {sight}});
            continue;
        }
        const QByteArray newest = pictures.value(nodes[view]);
        const bool isMember = known->view == view && places[i].isOfGroup;
        if (isMember && known->sights.size() < mostMembers) {
            known->sights.append(sight);
        } else if (known->view != view && !isOn(known->sights, newest) &&
                   (sight.picture == newest || !isPictured(known->sights))) {
            *known = {view, {sight}};
        }
    }
    for (auto it = found.cbegin(); it != found.cend(); ++it) {
        QVector<Sight>& known = m_sights[it.key()];
        if (isPictured(it->sights) || !isPictured(known)) {
            known = it->sights;
        }
    }
}

void ViewSights::addPicture(const Runs::Run& run, const QByteArray& hash, const RunElement& view) {
    if (m_pictures.contains(hash)) {
        return;
    }
    const QByteArray png = run.pictures.value(hash);
    const QRect place = view.place.value_or(QRect());
    QRect bounds = picturedBounds(png, place);
    // An older picture has the pixels of the newest one, while the size may be another by now.
    const QByteArray newest = run.pictures.value(view.picture);
    if (view.picture != hash && !newest.isEmpty() && !place.isEmpty()) {
        const QRect shown = picturedBounds(newest, place);
        const double scale = double(sizeOf(newest).width()) / qMax(1, shown.width());
        bounds = QRect(place.topLeft(), (QSizeF(sizeOf(png)) / scale).toSize());
    }
    m_pictures.insert(hash, {png, bounds});
}

void ViewSights::dropUnneeded() {
    QSet<QByteArray> needed;
    for (const View& view : qAsConst(m_views)) {
        needed.insert(view.picture);
    }
    for (const QVector<Sight>& sights : qAsConst(m_sights)) {
        for (const Sight& sight : sights) {
            needed.insert(sight.picture);
        }
    }
    for (auto it = m_pictures.begin(); it != m_pictures.end();) {
        it = needed.contains(it.key()) ? std::next(it) : m_pictures.erase(it);
    }
}

std::optional<ViewSights::View> ViewSights::view(NodeId node) const {
    const auto view = m_views.constFind(node);
    return view == m_views.cend() ? std::nullopt : std::make_optional(*view);
}

const ViewSights::Picture* ViewSights::picture(const QByteArray& hash) const {
    const auto picture = m_pictures.constFind(hash);
    return picture == m_pictures.cend() ? nullptr : &*picture;
}

} // namespace Uicov::Report::Html
