#include "grab.h"

#include "uiabstraction/pngreader.h"

#include <QPixmap>
#include <QQuickWindow>
#include <QRect>
#include <QWidget>

namespace Vorsk {
namespace UICoverage {

namespace {

bool isBeyondReason(const QSize& size, qreal devicePixelRatio) {
    const qreal pixels = size.width() * devicePixelRatio * size.height() * devicePixelRatio;
    return pixels > static_cast<qreal>(UIAbstraction::maximumImagePixels);
}

} // namespace

QImage grabWidget(QWidget* widget, const QRect& rectangle) {
    const QSize size = rectangle.size().isValid() ? rectangle.size() : widget->size();
    if (isBeyondReason(size, widget->devicePixelRatioF())) {
        return {};
    }
    return widget->grab(rectangle).toImage();
}

QImage grabWindow(QQuickWindow* window) {
    if (isBeyondReason(window->size(), window->effectiveDevicePixelRatio())) {
        return {};
    }
    return window->grabWindow();
}

QImage copyImage(const QImage& image, const QRect& rectangle) {
    if (image.isNull() || isBeyondReason(rectangle.size(), 1)) {
        return {};
    }
    if (rectangle.isEmpty()) {
        return image.copy(rectangle);
    }
    // What lies wholly outside is moved to just outside: the result is the same, and QImage's own
    // arithmetic stays within its range.
    const int left = qBound(-rectangle.width(), rectangle.left(), image.width());
    const int top = qBound(-rectangle.height(), rectangle.top(), image.height());
    return image.copy(QRect(QPoint(left, top), rectangle.size()));
}

} // namespace UICoverage
} // namespace Vorsk
