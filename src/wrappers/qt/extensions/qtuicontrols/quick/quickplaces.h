// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRect>

QT_BEGIN_NAMESPACE
class QObject;
class QQuickItem;
class QQuickWindow;
class QRectF;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/** The item by which the object is seen: itself, that of a popup, the one that a pointer handler is
 * attached to, the content item of a window; null when there is none, as for an action. */
QQuickItem* itemOf(const QObject* object);

/** Where the object's item lies in its top-level window, in pixels; empty when it has no item or
 * lies in no window. */
QRect placeOf(const QObject* object);

/** The same without what items that clip, as a list does, and the window's edge cut off; empty when
 * that is all. */
QRect placeInSight(const QQuickItem& item);

/** Saturates: items may have sizes that are infinite, or no numbers. */
QRect toPixels(const QRectF& rectangle);

} // namespace UIControls
} // namespace Vorsk
