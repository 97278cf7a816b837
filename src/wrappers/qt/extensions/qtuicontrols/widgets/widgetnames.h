// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class WidgetLabels;

// What a person calls a widget by, and how it stands. Only plain getters of Qt are read.

/** The caption of a control as it is read, without mnemonics; null when it has none. */
QString captionOf(const QWidget* widget);

/**
 * What a view is called: the title of a window, menu or page of a wizard; for a menu without one,
 * what the action or button that brings it up is called. Null when there is neither.
 */
QString titleOf(const QWidget* widget);

/** What is written into the widget while nothing is typed; null when it has no such text. */
QString placeholderOf(const QWidget* widget);

/** The object's name; null for the names that Qt gives to its own parts. */
QString objectNameOf(const QWidget* widget);

/** Whether a person can operate it as it is now: enabled, and not read-only. */
bool isOperable(const QWidget* widget);

/** Whether the widget is hidden by itself or by what lies between it and the view. */
bool isHiddenWithin(const QWidget* widget, const QWidget* view);

/** Whether the input hides what is typed. */
bool isSensitive(const QWidget* widget);

/**
 * All that is known of the widget as an element of that type, other than its uses and its group.
 * @param view the widget of the view in which it lies; null for a view that lies in none
 */
Description describe(const QWidget* widget, ElementType type, const QWidget* view,
                     WidgetLabels& labels);

} // namespace UIControls
} // namespace Vorsk
