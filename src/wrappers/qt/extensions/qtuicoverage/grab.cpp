// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/grab.h"

#include "recordstream/pngreader.h"

#include <QBrush>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPointer>
#include <QRect>
#include <QWidget>

#include <utility>

namespace Vorsk {
namespace UICoverage {

namespace {

bool isOpaque(const QBrush& brush) {
    return brush.style() != Qt::NoBrush && brush.isOpaque();
}

/** Whether Qt takes it that the widget paints all of itself. QWidget::grab() then clears nothing
 * before, and the parent does not paint below it. */
bool isOpaque(const QWidget& widget) {
    if (widget.graphicsEffect() != nullptr) {
        return false;
    }
    const bool hasSystemBackground =
        widget.isWindow() && !widget.testAttribute(Qt::WA_NoSystemBackground);
    const QPalette& palette = widget.palette();
    return widget.testAttribute(Qt::WA_OpaquePaintEvent) ||
           widget.testAttribute(Qt::WA_PaintOnScreen) ||
           (widget.autoFillBackground() && isOpaque(palette.brush(widget.backgroundRole()))) ||
           (hasSystemBackground && isOpaque(palette.brush(QPalette::Window)));
}

/** Whether the widget says that it paints all of itself and Qt puts nothing below what it paints.
 * Nothing that has been painted on is below it either: Qt leaves out what it covers. */
bool hasNoGround(const QWidget& widget) {
    return (widget.testAttribute(Qt::WA_OpaquePaintEvent) ||
            widget.testAttribute(Qt::WA_NoSystemBackground)) &&
           isOpaque(widget);
}

/** The widget that is being grabbed; null at any other time. */
QPointer<const QWidget>& grabbed() {
    static QPointer<const QWidget> widget;
    return widget;
}

} // namespace

bool isTooLargeToGrab(const QSize& size, qreal devicePixelRatio) {
    const qreal pixels = size.width() * devicePixelRatio * size.height() * devicePixelRatio;
    return pixels > static_cast<qreal>(RecordStream::maximumImagePixels);
}

QImage grabWidget(QWidget* widget, const QRect& rectangle) {
    const QSize size = rectangle.size().isValid() ? rectangle.size() : widget->size();
    if (isTooLargeToGrab(size, widget->devicePixelRatioF())) {
        return {};
    }
    const QPointer<QWidget> guard(widget);
    const QPointer<const QWidget> outer = std::exchange(grabbed(), widget);
    QPixmap picture = widget->grab(rectangle);
    grabbed() = outer;
    if (!guard.isNull() && !picture.isNull() && !picture.hasAlphaChannel() &&
        rectangle.size().isValid()) {
        // Where there is nothing of the widget nobody has painted.
        QPainter painter(&picture);
        painter.translate(-rectangle.topLeft());
        for (const QRect& part : QRegion(rectangle) - widget->rect()) {
            painter.fillRect(part, Qt::black);
        }
    }
    return picture.toImage();
}

void paintGround(QWidget* widget) {
    const QWidget* const root = grabbed();
    if (root != nullptr && (widget == root || root->isAncestorOf(widget)) &&
        widget->testAttribute(Qt::WA_WState_InPaintEvent) && hasNoGround(*widget)) {
        QPainter(widget).fillRect(widget->rect(), Qt::black);
    }
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
