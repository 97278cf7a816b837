// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>

QT_BEGIN_NAMESPACE
class QRect;
class QSize;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

// Pictures of what is on the screen. None has more pixels than any picture may have: a larger one
// is a null image. While something is rendered the application's own paint, layout and resize code
// runs: it may delete the widget or anything else, so callers must look everything up anew
// afterwards.

/**
 * The widget's picture, or that part of it, as QWidget::grab() renders it; null when it has no
 * area. An invalid size in the rectangle means the whole widget. Pixels that nobody paints are
 * black, or clear where the widget is not opaque; for that each Paint event must be told to
 * paintGround().
 */
QImage grabWidget(QWidget* widget, const QRect& rectangle);

/**
 * To be called when the widget is about to be painted. While it is grabbed, what says that it is
 * opaque gets black pixels to paint on: QWidget::grab() shows what lies in its memory where such a
 * widget leaves something out. Does nothing at any other time.
 */
void paintGround(QWidget* widget);

/** Whether a picture of that size, in device-independent pixels, would have too many pixels. */
bool isTooLargeToGrab(const QSize& size, qreal devicePixelRatio);

/** The part of the image that QImage::copy() gives for the rectangle, in the image's pixels. */
QImage copyImage(const QImage& image, const QRect& rectangle);

} // namespace UICoverage
} // namespace Vorsk
