// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/grab.h"

#include "recordstream/pngreader.h"

#include <QBrush>
#include <QPaintEvent>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPointer>
#include <QRect>
#include <QRegion>
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

/** Whether Qt draws what it renders elsewhere, for which it is not asked to paint. */
bool isRenderedElsewhere(const QWidget& widget) {
    return widget.inherits("QOpenGLWidget") || widget.inherits("QQuickWidget");
}

/** What is being grabbed, and what of it was painted so far. One may be made inside of another. */
class Grabbing {
public:
    explicit Grabbing(QWidget* root)
        : m_root(root)
        , m_outer(std::exchange(innermost, this)) {}
    ~Grabbing() { innermost = m_outer; }
    Q_DISABLE_COPY(Grabbing)

    static Grabbing* current() { return innermost; }

    bool holds(const QWidget* widget) const {
        return !m_root.isNull() && (widget == m_root || m_root->isAncestorOf(widget));
    }

    void addPainted(const QWidget* widget, const QRegion& region) {
        m_painted += region.translated(widget->mapTo(m_root, QPoint(0, 0)));
    }

    /** That part of the rectangle that nobody has painted; nothing when nobody told of anything. */
    QRegion missing(const QRect& rectangle) const {
        if (m_root.isNull() || m_painted.isEmpty()) {
            return {};
        }
        QRegion region = QRegion(rectangle) - m_painted;
        if (!region.isEmpty()) {
            const QList<QWidget*> descendants = m_root->findChildren<QWidget*>();
            for (const QWidget* widget : descendants) {
                if (isRenderedElsewhere(*widget)) {
                    region -= QRect(widget->mapTo(m_root, QPoint(0, 0)), widget->size());
                }
            }
        }
        return region;
    }

private:
    static Grabbing* innermost;
    QPointer<QWidget> m_root;
    QRegion m_painted;
    Grabbing* m_outer;
};

Grabbing* Grabbing::innermost = nullptr;

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
    Grabbing grabbing(widget);
    QPixmap picture = widget->grab(rectangle);
    if (!picture.isNull() && !picture.hasAlphaChannel()) {
        const QSize shown = (QSizeF(picture.size()) / picture.devicePixelRatioF()).toSize();
        QPainter painter(&picture);
        painter.translate(-rectangle.topLeft());
        for (const QRect& part : grabbing.missing(QRect(rectangle.topLeft(), shown))) {
            painter.fillRect(part, Qt::black);
        }
    }
    return picture.toImage();
}

void notePaint(QWidget* widget, const QPaintEvent& event) {
    Grabbing* const grabbing = Grabbing::current();
    if (grabbing == nullptr || !grabbing->holds(widget) ||
        !widget->testAttribute(Qt::WA_WState_InPaintEvent)) {
        return;
    }
    if (hasNoGround(*widget)) {
        QPainter(widget).fillRect(event.region().boundingRect(), Qt::black);
    }
    grabbing->addPainted(widget, event.region());
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
