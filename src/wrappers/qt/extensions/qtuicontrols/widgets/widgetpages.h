// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/widgets/widgetclass.h"

#include <QList>
#include <QString>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/** Whether the widget is one of those that its container shows one at a time, as the page of a tab
 * widget, stack, wizard or tool box, or that is shown and shut by itself within a window, as a
 * dock. */
bool isPage(const QWidget* widget);

/** Whether widgets of that class can be pages anywhere, others only where mayHavePages() of their
 * parent says so. */
bool isPageClass(WidgetClass cls);
bool mayHavePages(const QWidget* parent);

/** The pages of a stack in the order of their indices; empty where there is no stack. */
QList<QWidget*> stackedPagesOf(const QWidget* parent);

/** What the page's tab, step or title bar calls it; null when it has no name. */
QString pageTitleOf(const QWidget* widget);

} // namespace UIControls
} // namespace Vorsk
