// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/quickgeometry.h"

#include <QQuickItem>
#include <QQuickWindow>

#include <cmath>
#include <limits>

namespace Vorsk {
namespace UICoverage {

namespace {

constexpr qreal leastOpacity = 1e-12;

/** The same in both directions, so that no distance that is computed from a saturated value wraps.
 */
constexpr int outermost = std::numeric_limits<int>::max();

int saturated(qreal value) {
    if (std::isnan(value)) {
        return 0;
    }
    return static_cast<int>(std::ceil(qBound<qreal>(-outermost, value, outermost)));
}

/** The last pixel of that many, beginning at start. */
int lastPixel(int start, int count) {
    return static_cast<int>(qBound<qint64>(-outermost, qint64(start) + count - 1, outermost));
}

} // namespace

bool isShownItem(const QQuickItem* item) {
    return item->isVisible() && std::abs(item->opacity()) > leastOpacity;
}

QRect sceneRectangle(const QQuickItem* item) {
    const QQuickWindow* const window = item->window();
    const QQuickItem* const contentItem = window == nullptr ? nullptr : window->contentItem();
    if (contentItem == nullptr) {
        return {};
    }
    const QRectF mapped = item->mapRectToScene(contentItem->boundingRect());
    const int left = saturated(mapped.x());
    const int top = saturated(mapped.y());
    QRect rectangle;
    rectangle.setCoords(left, top, lastPixel(left, saturated(item->width())),
                        lastPixel(top, saturated(item->height())));
    return rectangle;
}

} // namespace UICoverage
} // namespace Vorsk
