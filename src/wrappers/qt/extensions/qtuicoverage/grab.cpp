#include "grab.h"

#include "uiabstraction/pngreader.h"

#include <QPixmap>
#include <QQuickRenderControl>
#include <QQuickWindow>
#include <QRect>
#include <QSGRendererInterface>
#include <QWidget>

#include <cstddef>

namespace Vorsk {
namespace UICoverage {

namespace {

bool isBeyondReason(const QSize& size, qreal devicePixelRatio) {
    const qreal pixels = size.width() * devicePixelRatio * size.height() * devicePixelRatio;
    return pixels > static_cast<qreal>(UIAbstraction::maximumImagePixels);
}

/**
 * Qt 5 takes what draws a hidden window for OpenGL, also where it is the software renderer. What it
 * then reads is null where pointers have 32 bits, and it sets out to draw with it.
 */
bool wouldCrash(QQuickWindow* window) {
    constexpr std::size_t narrow = 4;
    return sizeof(void*) == narrow && !window->isVisible() &&
           window->rendererInterface()->graphicsApi() == QSGRendererInterface::Software &&
           QQuickRenderControl::renderWindowFor(window) == nullptr;
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
    if (isBeyondReason(window->size(), window->effectiveDevicePixelRatio()) || wouldCrash(window)) {
        return {};
    }
    return window->grabWindow();
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
    if (width > UIAbstraction::maximumImagePixels / height) {
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
