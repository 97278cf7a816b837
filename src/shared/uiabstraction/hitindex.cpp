// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "uiabstraction/hitindex.h"

#include "uiabstraction/uielement.h"

#include <QPoint>
#include <QRect>

#include <algorithm>
#include <cstddef>

namespace Vorsk {
namespace UIAbstraction {

namespace {

/** So many children are passed over together where none of them has the point. */
constexpr int blockSize = 32;

/** QRect::contains() with edges, which is asked for the few rectangles that are not clearly aside.
 */
bool isInside(const QRect& rect, const QPoint& point) {
    const bool isAside = point.y() < std::min(rect.top(), rect.bottom()) ||
                         point.y() > std::max(rect.top(), rect.bottom()) ||
                         point.x() < std::min(rect.left(), rect.right()) ||
                         point.x() > std::max(rect.left(), rect.right());
    return !isAside && rect.contains(point, false);
}

} // namespace

void HitIndex::cover(UIElement& element, const Extent& extent) {
    std::vector<UIElement*> further;
    UIElement* next = &element;
    while (next != nullptr) {
        UIElement* const covered = next;
        next = nullptr;
        if (!covered->m_hitIndex.m_extent.contains(extent)) {
            covered->m_hitIndex.m_extent.unite(extent);
            next = covered->m_parent;
            if (next != nullptr && next->m_hitIndex.m_blocks) {
                const auto block = static_cast<std::size_t>(covered->m_place / blockSize);
                (*next->m_hitIndex.m_blocks)[block].unite(extent);
            }
            for (UIElement* parent : covered->m_furtherParents) {
                parent->m_hitIndex.childrenChanged();
                further.push_back(parent);
            }
        }
        if (next == nullptr && !further.empty()) {
            next = further.back();
            further.pop_back();
        }
    }
}

void HitIndex::findBlocks(const UIElement& element) {
    const QList<UIElement*>& children = element.m_children;
    if (m_blocks || children.size() <= 2 * blockSize) {
        return;
    }
    m_blocks = std::make_unique<std::vector<Extent>>();
    for (int i = 0; i < children.size(); ++i) {
        if (i % blockSize == 0) {
            m_blocks->emplace_back();
        }
        m_blocks->back().unite(children.at(i)->m_hitIndex.m_extent);
    }
}

/** The first child from the place on at or below which there may be a hit; null when none. */
UIElement* HitIndex::nextAround(const UIElement& element, const QPoint& point, int& place) const {
    const QList<UIElement*>& children = element.m_children;
    while (place < children.size()) {
        if (m_blocks && place % blockSize == 0 &&
            !(*m_blocks)[static_cast<std::size_t>(place / blockSize)].contains(point)) {
            place += blockSize;
            continue;
        }
        UIElement* const child = children.at(place++);
        if (child->m_hitIndex.m_extent.contains(point)) {
            return child;
        }
    }
    return nullptr;
}

std::vector<UIElement*> HitIndex::elementsAt(UIElement& root, const QPoint& point) {
    struct Level {
        UIElement* element;
        int next;
    };
    std::vector<UIElement*> found;
    std::vector<Level> path;
    const auto visit = [&](UIElement* element) {
        if (isInside(element->m_geometry.rect(), point)) {
            found.push_back(element);
        }
        // Leaves stay off the path: nothing below them can lead back to them.
        if (!element->m_children.isEmpty()) {
            element->m_isEntered = true;
            element->m_hitIndex.findBlocks(*element);
            path.push_back({element, 0});
        }
    };
    visit(&root);
    while (!path.empty()) {
        Level& level = path.back();
        UIElement* const child =
            level.element->m_hitIndex.nextAround(*level.element, point, level.next);
        if (child == nullptr) {
            level.element->m_isEntered = false;
            path.pop_back();
        } else if (!child->m_isEntered) {
            visit(child);
        }
    }
    return found;
}

} // namespace UIAbstraction
} // namespace Vorsk
