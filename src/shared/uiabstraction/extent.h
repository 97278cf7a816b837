// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPoint>

#include <limits>

QT_BEGIN_NAMESPACE
class QRect;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIAbstraction {

/**
 * The least upright rectangle around some others, for telling quickly that a point is in none of
 * them. Holds no point at first and only ever grows. A plain value.
 */
class Extent {
public:
    Extent() = default;
    /** All points that QRect::contains() finds in the rectangle, edges included; maybe those around
     * one that is turned inside out. */
    explicit Extent(const QRect& rect);

    bool contains(const QPoint& point) const {
        return point.x() >= m_left && point.x() <= m_right && point.y() >= m_top &&
               point.y() <= m_bottom;
    }
    /** True when all points of the other are in this one. */
    bool contains(const Extent& other) const {
        return other.m_left >= m_left && other.m_right <= m_right && other.m_top >= m_top &&
               other.m_bottom <= m_bottom;
    }
    void unite(const Extent& other);

private:
    int m_left = std::numeric_limits<int>::max();
    int m_top = std::numeric_limits<int>::max();
    int m_right = std::numeric_limits<int>::min();
    int m_bottom = std::numeric_limits<int>::min();
};

} // namespace UIAbstraction
} // namespace Vorsk
