// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>

QT_BEGIN_NAMESPACE
class QQuickWindow;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

/**
 * The window's picture as QQuickWindow::grabWindow() renders it; null when that fails or would.
 * What grab.h says of the application's own code holds here as well.
 */
QImage grabWindow(QQuickWindow* window);

} // namespace UICoverage
} // namespace Vorsk
