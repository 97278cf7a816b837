// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickowners.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QVariant>

#include <cstring>

namespace Vorsk {
namespace UIControls {

namespace {

/** Popups have their items laid on it. */
bool isOverlay(const QQuickItem* item) {
    return std::strcmp(item->metaObject()->className(), "QQuickOverlay") == 0;
}

QObject* outerOfItem(const QQuickItem* item) {
    QQuickItem* const parentItem = item->parentItem();
    if (parentItem != nullptr && !isOverlay(parentItem)) {
        return parentItem;
    }
    // The item of a popup belongs to the popup, which is no item; the content item of a window, to
    // the window.
    QObject* const parent = item->parent();
    return parent != nullptr && !parent->isWidgetType() ? parent : parentItem;
}

} // namespace

QuickOwners::QuickOwners(ElementBook& book)
    : m_book(book) {}

QObject* QuickOwners::outerOf(QObject* object) {
    if (const auto* const item = qobject_cast<QQuickItem*>(object)) {
        return outerOfItem(item);
    }
    if (object->inherits("QQuickPopup")) {
        if (auto* const item = object->property("parent").value<QQuickItem*>()) {
            return item;
        }
    }
    if (std::strcmp(object->metaObject()->className(), "QQuickMenuPopupWindow1") == 0) {
        // Each menu of the first generation has a window of its own and owns what that shows.
        const QList<QQuickItem*> shown =
            static_cast<QQuickWindow*>(object)->contentItem()->childItems();
        return shown.isEmpty() ? nullptr : shown.first()->parent();
    }
    return object->parent();
}

QObject* QuickOwners::controlOf(QObject* receiver) const {
    QObject* const object = nearest(
        receiver, [this](QObject* candidate) { return m_book.elementOf(candidate) != nullptr; });
    return object != nullptr && !isView(m_book.typeOf(m_book.elementOf(object))) ? object : nullptr;
}

bool QuickOwners::isWithin(QObject* object, const QObject* outer) {
    return nearest(object, [outer](const QObject* candidate) { return candidate == outer; }) !=
           nullptr;
}

} // namespace UIControls
} // namespace Vorsk
