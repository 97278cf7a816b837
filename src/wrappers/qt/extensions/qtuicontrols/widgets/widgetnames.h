#pragma once

#include "qtuicontrols/elementbook.h"

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

// What a person calls a widget by. Only plain getters of Qt are read.

/** The caption of a control or view as it is read, without mnemonics; null when it has none. */
QString captionOf(const QWidget* widget);

/**
 * What stands beside the widget and says what it is for: its buddy, the label of its form row, the label before or above
 * it in the same layout, or the title of the group box that it is alone in or first in. Null when nothing does.
 */
QString labelOf(const QWidget* widget);

/** Everything that is known of the widget as an element of that type, whose events are left to the caller. The view is
 * the widget of its view; null for a view that stands by itself. */
Description describe(const QWidget* widget, ElementType type, const QWidget* view);

/** Whether the widget is hidden within its view, by itself or by what contains it. */
bool isHiddenWithin(const QWidget* widget, const QWidget* view);

/** Whether the input hides what is typed. */
bool isSensitive(const QWidget* widget);

} // namespace UIControls
} // namespace Vorsk
