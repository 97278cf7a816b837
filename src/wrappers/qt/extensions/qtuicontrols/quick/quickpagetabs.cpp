// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickpagetabs.h"

#include "qtuicontrols/quick/quickclass.h"

#include <QQuickWindow>
#include <QVariant>

#include <algorithm>
#include <utility>

namespace Vorsk {
namespace UIControls {

namespace {

QQuickItem* itemAt(QQuickItem* container, int index) {
    QQuickItem* item = nullptr;
    QMetaObject::invokeMethod(container, "itemAt", Qt::DirectConnection,
                              Q_RETURN_ARG(QQuickItem*, item), Q_ARG(int, index));
    return item;
}

/** Whether it shows as many as the view and is at the same one. */
bool goesWith(const QQuickItem* tabBar, const QQuickItem* swipeView) {
    for (const char* const property : {"count", "currentIndex"}) {
        if (tabBar->property(property) != swipeView->property(property)) {
            return false;
        }
    }
    return true;
}

/** The bar that is the item or, as in a tool bar, lies in it; null when none goes with the view. */
QQuickItem* tabBarIn(QQuickItem* outer, const QQuickItem* swipeView, int depth) {
    if (outer == nullptr) {
        return nullptr;
    }
    if (extendsClass(outer, "QQuickTabBar")) {
        return goesWith(outer, swipeView) ? outer : nullptr;
    }
    const QList<QQuickItem*> children = depth > 0 ? outer->childItems() : QList<QQuickItem*>();
    for (QQuickItem* child : children) {
        if (QQuickItem* const inner = tabBarIn(child, swipeView, depth - 1)) {
            return inner;
        }
    }
    return nullptr;
}

/** In the header or footer of a page or an application's window. */
QQuickItem* tabBarAround(const QObject* page, const QQuickItem* swipeView) {
    constexpr int depth = 3;
    for (const char* const place : {"header", "footer"}) {
        auto* const item = page->property(place).value<QQuickItem*>();
        if (QQuickItem* const found = tabBarIn(item, swipeView, depth)) {
            return found;
        }
    }
    return nullptr;
}

/** The tab bar that stands beside the view, or around it; null when there is none. */
QQuickItem* tabBarOf(const QQuickItem* swipeView) {
    const QQuickItem* const parent = swipeView->parentItem();
    const QList<QQuickItem*> siblings =
        parent == nullptr ? QList<QQuickItem*>() : parent->childItems();
    for (QQuickItem* sibling : siblings) {
        if (QQuickItem* const found = tabBarIn(sibling, swipeView, 0)) {
            return found;
        }
    }
    for (const QQuickItem* outer = parent; outer != nullptr; outer = outer->parentItem()) {
        if (QQuickItem* const found = tabBarAround(outer, swipeView)) {
            return found;
        }
    }
    return swipeView->window() == nullptr ? nullptr : tabBarAround(swipeView->window(), swipeView);
}

QQuickItem* buttonOf(const QQuickItem* page, QQuickItem* swipeView) {
    QQuickItem* const tabBar = tabBarOf(swipeView);
    const int count = tabBar == nullptr ? 0 : swipeView->property("count").toInt();
    for (int i = 0; i < count; ++i) {
        if (itemAt(swipeView, i) == page) {
            return itemAt(tabBar, i);
        }
    }
    return nullptr;
}

} // namespace

void QuickPageTabs::add(QQuickItem* page, QQuickItem* swipeView, UIElement* pageElement,
                        const Surroundings& where, const QString& title) {
    m_waiting.push_back({page, swipeView, pageElement, where, title});
}

void QuickPageTabs::settle() {
    for (const Waiting& waiting : std::exchange(m_waiting, {})) {
        if (waiting.page.isNull() || waiting.swipeView.isNull()) {
            continue;
        }
        UIElement* const tab = m_book.elementOf(buttonOf(waiting.page, waiting.swipeView));
        if (tab != nullptr && m_book.typeOf(tab) == ElementType::Tab) {
            m_elements.joinTab(waiting.page, waiting.element, tab);
            m_joined.push_back(waiting);
        } else {
            m_elements.addTab(waiting.page, waiting.element, waiting.where, waiting.title);
        }
    }
}

void QuickPageTabs::separate(const QObject* page) {
    const auto isGone = [](const Waiting& joined) { return joined.page.isNull(); };
    m_joined.erase(std::remove_if(m_joined.begin(), m_joined.end(), isGone), m_joined.end());
    const auto found = std::find_if(m_joined.begin(), m_joined.end(),
                                    [page](const Waiting& joined) { return joined.page == page; });
    if (found != m_joined.end()) {
        const Waiting joined = *found;
        m_joined.erase(found);
        m_elements.addTab(joined.page, joined.element, joined.where, joined.title);
    }
}

} // namespace UIControls
} // namespace Vorsk
