#pragma once

#include <QImage>

QT_BEGIN_NAMESPACE
class QQuickWindow;
class QRect;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

// Pictures of what is on the screen. None has more pixels than any picture may have: a larger one
// is a null image. While a widget or window is rendered the application's own paint, layout and
// resize code runs: it may delete the widget or anything else, so callers must look everything up
// anew afterwards.

/**
 * The widget's picture, or that part of it, as QWidget::grab() renders it; null when it has no
 * area. An invalid size in the rectangle means the whole widget.
 */
QImage grabWidget(QWidget* widget, const QRect& rectangle);

/** The window's picture as QQuickWindow::grabWindow() renders it; null when that fails or would. */
QImage grabWindow(QQuickWindow* window);

/** The part of the image that QImage::copy() gives for the rectangle, in the image's pixels. */
QImage copyImage(const QImage& image, const QRect& rectangle);

} // namespace UICoverage
} // namespace Vorsk
