// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QRect>

namespace Uicov::Report::Html {

/**
 * Compares an element's own picture with the part of its window's picture where it should be:
 * whether it is the same, another state of the same thing, or something else, as with the hidden
 * pages of a tab widget.
 */
class PictureFit {
public:
    /** @param place in pixels of the surface's picture */
    PictureFit(const QImage& surface, const QImage& own, const QRect& place);

    /** Every pixel is the same. */
    bool isSame() const { return m_isSame; }
    /**
     * The two have nothing in common. False when that cannot be told: pictures of other sizes, or
     * without anything drawn in them.
     */
    bool isOther() const { return m_isOther; }
    /** 1 for the same, about 0 for what has nothing in common, and 0 where nobody can tell. */
    double likeness() const { return m_likeness; }

private:
    void correlate(const QImage& shown, const QImage& own);

    bool m_isSame = false;
    bool m_isOther = false;
    double m_likeness = 0;
};

} // namespace Uicov::Report::Html
