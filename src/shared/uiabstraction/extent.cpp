// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "uiabstraction/extent.h"

#include <QRect>

#include <algorithm>

namespace Vorsk {
namespace UIAbstraction {

namespace {

struct Span {
    int first;
    int last;
};

/** The points between two edges. Where those are the wrong way round, versions of QRect differ in
 * whether they belong to it; here they do. */
Span spanOf(int first, int last) {
    return qint64{last} < qint64{first} - 1 ? Span{last, first} : Span{first, last};
}

} // namespace

Extent::Extent(const QRect& rect) {
    const Span columns = spanOf(rect.left(), rect.right());
    const Span rows = spanOf(rect.top(), rect.bottom());
    if (columns.first <= columns.last && rows.first <= rows.last) {
        m_left = columns.first;
        m_top = rows.first;
        m_right = columns.last;
        m_bottom = rows.last;
    }
}

void Extent::unite(const Extent& other) {
    m_left = std::min(m_left, other.m_left);
    m_top = std::min(m_top, other.m_top);
    m_right = std::max(m_right, other.m_right);
    m_bottom = std::max(m_bottom, other.m_bottom);
}

} // namespace UIAbstraction
} // namespace Vorsk
