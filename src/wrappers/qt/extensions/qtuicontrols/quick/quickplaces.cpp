// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickplaces.h"

#include "qtuicontrols/quick/quickclass.h"
#include "qtuicontrols/quick/quickwidgets.h"

#include <QQuickItem>
#include <QQuickWindow>

#include <cmath>

namespace Vorsk {
namespace UIControls {

namespace {

int saturated(qreal value) {
    constexpr qreal most = 1 << 24;
    if (std::isnan(value)) {
        return 0;
    }
    return static_cast<int>(std::lround(qBound(-most, value, most)));
}

} // namespace

QQuickItem* itemOf(const QObject* object) {
    if (object == nullptr) {
        return nullptr;
    }
    if (auto* const item =
            qobject_cast<QQuickItem*>(const_cast<QObject*>(object))) { // as it was given
        return item;
    }
    if (const auto* const window = qobject_cast<const QQuickWindow*>(object)) {
        return window->contentItem();
    }
    switch (QuickClass::of(object).role()) {
    case QuickRole::Popup:
        for (QObject* child : object->children()) {
            if (QuickClass::of(child).role() == QuickRole::PopupItem) {
                return qobject_cast<QQuickItem*>(child);
            }
        }
        return nullptr;
    case QuickRole::Handler:
        return qobject_cast<QQuickItem*>(object->parent());
    case QuickRole::Action: // of the first generation; others have none
        return object->property("__visualItem").value<QQuickItem*>();
    default:
        return nullptr;
    }
}

QRect placeOf(const QObject* object) {
    if (const auto* const window = qobject_cast<const QQuickWindow*>(object)) {
        return {QPoint(0, 0), window->size()};
    }
    const QQuickItem* const item = itemOf(object);
    if (item == nullptr || item->window() == nullptr) {
        return {};
    }
    return toPixels(item->mapRectToScene(QRectF(0, 0, item->width(), item->height())))
        .translated(QuickWidgets::offsetOf(item->window()));
}

QRect placeInSight(const QQuickItem& item) {
    if (item.window() == nullptr) {
        return {};
    }
    QRectF part = item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
    for (const QQuickItem* above = item.parentItem(); above != nullptr;
         above = above->parentItem()) {
        if (above->clip()) {
            part &= above->mapRectToScene(QRectF(0, 0, above->width(), above->height()));
        }
    }
    part &= QRectF(QPointF(), item.window()->size());
    return part.isEmpty() ? QRect()
                          : toPixels(part).translated(QuickWidgets::offsetOf(item.window()));
}

QRect toPixels(const QRectF& rectangle) {
    const int left = saturated(rectangle.left());
    const int top = saturated(rectangle.top());
    return {left, top, saturated(rectangle.right()) - left, saturated(rectangle.bottom()) - top};
}

} // namespace UIControls
} // namespace Vorsk
