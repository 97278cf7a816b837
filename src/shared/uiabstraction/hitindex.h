// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "uiabstraction/extent.h"

#include <memory>
#include <vector>

QT_BEGIN_NAMESPACE
class QPoint;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIAbstraction {

class UIElement;

/**
 * The part of an element by which the elements at a point are found without looking at all below
 * it: the extent of the whole subtree and, where there are many children, those of runs of them.
 * Extents only ever grow, so that one may cover what is no longer there, and never too little.
 */
class HitIndex {
public:
    /** Notes that there may be a hit there, for the element and for all that list it. */
    static void cover(UIElement& element, const Extent& extent);

    /**
     * The elements from there down whose rectangle contains the point, in the order of the walk; an
     * element that is listed by several is found once for each of them.
     */
    static std::vector<UIElement*> elementsAt(UIElement& root, const QPoint& point);

    /** Covers the rectangles of the element and of all below it, and whatever they once were. */
    const Extent& extent() const { return m_extent; }
    /** To be called when the element's list of children has changed. */
    void childrenChanged() { m_blocks.reset(); }

private:
    void findBlocks(const UIElement& element);
    UIElement* nextAround(const UIElement& element, const QPoint& point, int& place) const;

    Extent m_extent;
    /** What runs of so many children cover together; null until it is wanted. */
    std::unique_ptr<std::vector<Extent>> m_blocks;
};

} // namespace UIAbstraction
} // namespace Vorsk
