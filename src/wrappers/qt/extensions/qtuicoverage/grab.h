// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>

QT_BEGIN_NAMESPACE
class QPaintEvent;
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
 * To be called with each Paint event, before the widget gets it. QWidget::grab() clears nothing
 * below what is opaque: where that leaves something out, or is not painted at all because its
 * updates are disabled, its picture shows what lay in the application's memory. So what is opaque
 * gets black ground to paint on, and what was painted is noted. Does nothing while nothing is
 * grabbed.
 */
void notePaint(QWidget* widget, const QPaintEvent& event);

/** Whether a picture of that size, in device-independent pixels, would have too many pixels. */
bool isTooLargeToGrab(const QSize& size, qreal devicePixelRatio);

/** The part of the image that QImage::copy() gives for the rectangle, in the image's pixels. */
QImage copyImage(const QImage& image, const QRect& rectangle);

} // namespace UICoverage
} // namespace Vorsk
