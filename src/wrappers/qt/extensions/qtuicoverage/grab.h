#pragma once

#include <QImage>

QT_BEGIN_NAMESPACE
class QRect;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

/**
 * The widget's picture, or that part of it, as QWidget::grab() renders it; null when it has no area
 * or more pixels than any picture may have. An invalid size in the rectangle means the whole
 * widget.
 *
 * The application's own paint, layout and resize code runs inside: it may delete the widget or
 * anything else, so callers must look everything up anew afterwards.
 */
QImage grabWidget(QWidget* widget, const QRect& rectangle);

} // namespace UICoverage
} // namespace Vorsk
