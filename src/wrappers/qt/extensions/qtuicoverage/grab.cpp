// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/grab.h"

#include "recordstream/pngreader.h"

#include <QPixmap>
#include <QRect>
#include <QWidget>

namespace Vorsk {
namespace UICoverage {

bool isTooLargeToGrab(const QSize& size, qreal devicePixelRatio) {
    const qreal pixels = size.width() * devicePixelRatio * size.height() * devicePixelRatio;
    return pixels > static_cast<qreal>(RecordStream::maximumImagePixels);
}

QImage grabWidget(QWidget* widget, const QRect& rectangle) {
    const QSize size = rectangle.size().isValid() ? rectangle.size() : widget->size();
    if (isTooLargeToGrab(size, widget->devicePixelRatioF())) {
        return {};
    }
    return widget->grab(rectangle).toImage();
}

QImage copyImage(const QImage& image, const QRect& rectangle) {
    if (image.isNull()) {
        return {};
    }
    if (rectangle == image.rect()) {
        return image; // items that fill the window share its pixels
    }
    if (rectangle.isEmpty()) {
        return image.copy(rectangle);
    }
    const qint64 width = qint64(rectangle.right()) - rectangle.left() + 1;
    const qint64 height = qint64(rectangle.bottom()) - rectangle.top() + 1;
    if (width > RecordStream::maximumImagePixels / height) {
        return {};
    }
    // What lies wholly outside is moved to just outside: the result is the same, and QImage's own
    // arithmetic stays within its range.
    const auto left = qBound<qint64>(-width, rectangle.left(), image.width());
    const auto top = qBound<qint64>(-height, rectangle.top(), image.height());
    return image.copy(static_cast<int>(left), static_cast<int>(top), static_cast<int>(width),
                      static_cast<int>(height));
}

} // namespace UICoverage
} // namespace Vorsk
