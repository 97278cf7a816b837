// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRect>

QT_BEGIN_NAMESPACE
class QQuickItem;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

/** Whether the item is visible and not fully transparent. */
bool isShownItem(const QQuickItem* item);

/**
 * The item's place in the scene of its window, in pixels, rounded up; as wide and high as the item
 * itself, whatever its transformation. Coordinates that no int can hold are saturated, and what is
 * not a number is 0. An empty QRect() when the item is in no window.
 */
QRect sceneRectangle(const QQuickItem* item);

} // namespace UICoverage
} // namespace Vorsk
