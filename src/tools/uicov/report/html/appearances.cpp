// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/appearances.h"

#include "run/elementkinds.h"
#include "run/keywalk.h"
#include "run/run.h"

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
    m_times.add(run, places, nodes);
    if (run.isOfControls()) {
        addControls(run, places, nodes);
        m_sights.add(run, places, nodes);
    } else {
        addSurfaces(run, places, nodes);
    }
}

void Appearances::addControls(const Runs::Run& run, const Places& places,
                              const std::vector<NodeId>& nodes) {
    for (std::size_t i = 0; i < places.size(); ++i) {
        const RunElement& element = run.element(places[i].element);
        Element& known = m_elements[nodes[i]];
        known.className = Runs::ElementKey::normalisedClass(element.className);
        known.text = element.text;
        known.hasPlace = known.hasPlace || element.place.has_value();
        known.isDisabled =
            element.attributes.value(Runs::AttributeName::enabled()) == QLatin1String("false");
        const Runs::ElementKey::Step& step = places[i].step;
        known.group = !places[i].isOfGroup     ? QString()
                      : step.caption.isEmpty() ? step.label
                                               : step.caption;
    }
}

void Appearances::addSurfaces(const Runs::Run& run, const Places& places,
                              const std::vector<NodeId>& nodes) {
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
            surfaces.insert(static_cast<int>(i),
                            {png, picturedBounds(png, element.place.value_or(QRect())), {}});
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
    while (tree.node(surface).parent != NodeId::None && !tree.node(surface).isMenu &&
           tree.node(surface).role != CoverageTree::Node::Role::View) {
        surface = tree.node(surface).parent;
    }
    return surface;
}

} // namespace Uicov::Report::Html
