// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/** Whether the widget's class is the application's, or one of its libraries', and not Qt's. A class
 * without a meta-object of its own looks like what it extends. */
bool isOwnClass(const QWidget* widget);

/** Whether the application has code of its own for a mouse press on the widget, in its class or
 * one that this extends. */
bool handlesPress(const QWidget* widget);

/** The same for what a pen does. */
bool handlesTablet(const QWidget* widget);

} // namespace UIControls
} // namespace Vorsk
