// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/appearances.h"

#include "run/keywalk.h"
#include "run/run.h"

#include <QBuffer>
#include <QImageReader>
#include <QMap>
#include <QSet>

#include <optional>

namespace Uicov::Report::Html {

using Coverage::CoverageTree;
using Coverage::NodeId;
using Runs::KeyWalk;
using Runs::RunElement;
using Places = std::vector<KeyWalk::Place>;

namespace {

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

QRect boundsOf(const RunElement& element, const QByteArray& png) {
    const QRect place = element.place.value_or(QRect());
    const QSize size = png.isEmpty() ? QSize() : sizeOf(png);
    if (size.isEmpty() || shows(size, place)) {
        return place;
    }
    return {place.topLeft(), size};
}

/** In the coordinates of its surface. */
std::optional<QRect> placeOf(const RunElement& element, const RunElement* above) {
    const bool isInMenuBar = above != nullptr && element.type == QLatin1String("MenuItem") &&
                             above->type == QLatin1String("MenuBar");
    if (!element.place || !isInMenuBar) {
        return element.place;
    }
    if (!above->place) {
        return std::nullopt;
    }
    return element.place->translated(above->place->topLeft());
}

std::vector<NodeId> nodesOf(const Runs::Run& run, const Places& places, const CoverageTree& tree) {
    std::vector<NodeId> nodes;
    nodes.reserve(places.size());
    for (const KeyWalk::Place& place : places) {
        nodes.push_back(
            place.above < 0
                ? NodeId(tree.findWindow(place.step, run.application))
                : tree.findChild(nodes[static_cast<std::size_t>(place.above)], place.step));
        Q_ASSERT(nodes.back() != NodeId::None);
    }
    return nodes;
}

} // namespace

void Appearances::add(const Runs::Run& run, const CoverageTree& tree) {
    const Places places = KeyWalk(run, m_nameRules).places();
    const std::vector<NodeId> nodes = nodesOf(run, places, tree);
    addOwners(run, places, nodes);
    // By the index of the place: the same window can be there several times in a run.
    QMap<int, Surface> surfaces;
    std::vector<int> surfaceOfPlace(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        const KeyWalk::Place& place = places[i];
        const RunElement& element = run.element(place.element);
        const auto above = static_cast<std::size_t>(qMax(0, place.above));
        const QByteArray png = run.pictures.value(element.picture);
        const bool isSurface = place.above < 0 || KeyWalk::isMenu(element);
        surfaceOfPlace[i] = isSurface ? static_cast<int>(i) : surfaceOfPlace[above];
        if (isSurface) {
            surfaces.insert(static_cast<int>(i), {png, boundsOf(element, png), {}});
        }
        const RunElement* const parent =
            place.above < 0 ? nullptr : &run.element(places[above].element);
        Element& known = m_elements[nodes[i]];
        known.className = Runs::ElementKey::normalisedClass(element.className);
        known.text = element.text;
        known.png = png.isEmpty() ? known.png : png;
        if (const auto rectangle = placeOf(element, parent)) {
            known.hasPlace = true;
            surfaces[surfaceOfPlace[i]].places.insert(nodes[i], *rectangle);
        }
    }
    QHash<NodeId, Surface> ofThisRun;
    for (auto it = surfaces.cbegin(); it != surfaces.cend(); ++it) {
        keep(nodes[static_cast<std::size_t>(it.key())], *it, ofThisRun);
    }
    for (auto it = ofThisRun.cbegin(); it != ofThisRun.cend(); ++it) {
        const auto known = m_surfaces.constFind(it.key());
        // A newer picture is better than a fuller one, since the interface may have changed.
        if (!it->png.isEmpty() || known == m_surfaces.cend()) {
            m_surfaces.insert(it.key(), *it);
        } else {
            keep(it.key(), *it, m_surfaces);
        }
    }
}

void Appearances::addOwners(const Runs::Run& run, const Places& places,
                            const std::vector<NodeId>& nodes) {
    // By index of the element: the node of its window.
    QHash<int, NodeId> windows;
    NodeId window = NodeId::None;
    for (std::size_t i = 0; i < places.size(); ++i) {
        window = places[i].above < 0 ? nodes[i] : window;
        windows.insert(places[i].element, window);
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (places[i].above >= 0) {
            continue;
        }
        QSet<int> seen; // elements can stand below themselves
        int above = run.element(places[i].element).parent;
        while (above >= 0 && !windows.contains(above) && !seen.contains(above)) {
            seen.insert(above);
            above = run.element(above).parent;
        }
        const NodeId owner = windows.value(above, NodeId::None);
        if (owner != NodeId::None && owner != nodes[i]) {
            m_owners.insert(nodes[i], owner);
        }
    }
}

/** The one with a picture, then the one in which more is to be seen, then the later one. */
void Appearances::keep(NodeId node, const Surface& candidate, QHash<NodeId, Surface>& kept) {
    const auto known = kept.constFind(node);
    if (known != kept.cend()) {
        const bool hasPicture = !candidate.png.isEmpty();
        const bool hadPicture = !known->png.isEmpty();
        const bool isBetter =
            hasPicture != hadPicture ? hasPicture : candidate.places.size() >= known->places.size();
        if (!isBetter) {
            return;
        }
    }
    kept.insert(node, candidate);
}

const Appearances::Surface* Appearances::surface(NodeId node) const {
    const auto it = m_surfaces.constFind(node);
    return it == m_surfaces.cend() ? nullptr : &*it;
}

NodeId Appearances::surfaceOf(const CoverageTree& tree, NodeId node) {
    NodeId surface = node;
    while (tree.node(surface).parent != NodeId::None && !tree.node(surface).isMenu) {
        surface = tree.node(surface).parent;
    }
    return surface;
}

} // namespace Uicov::Report::Html
