// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickpages.h"

#include "qtuicontrols/quick/quickclass.h"
#include "qtuicontrols/quick/quicknames.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QVariant>

namespace Vorsk {
namespace UIControls {

namespace {

/** As a page would: what is smaller is something on it. */
bool coversMuch(const QQuickItem* item) {
    const QQuickWindow* const window = item->window();
    constexpr qreal part = 0.5;
    return window != nullptr && item->width() >= part * window->width() &&
           item->height() >= part * window->height();
}

} // namespace

// Pages lie in the content item of the list that is the view's content item.
QQuickItem* swipeViewOf(const QQuickItem* page) {
    const QQuickItem* const content = page->parentItem();
    const QQuickItem* const list = content == nullptr ? nullptr : content->parentItem();
    QQuickItem* const view = list == nullptr ? nullptr : list->parentItem();
    return view != nullptr && QuickClass::of(list).role() == QuickRole::ItemView &&
                   QuickClass::of(view).role() == QuickRole::SwipeView &&
                   list->property("highlightItem").value<QQuickItem*>() != page
               ? view
               : nullptr;
}

QString titleOfPage(const QQuickItem* page) {
    const QQuickItem* const parent = page->parentItem();
    if (QuickClass::of(parent).name() == "Tab") {
        return parent->property("title").toString();
    }
    return page->property("title").toString();
}

bool isPageOf(const QQuickItem* parent, const QQuickItem* item, bool isInRow) {
    const QuickClass& cls = QuickClass::of(item);
    if (cls.role() == QuickRole::Repeater || cls.role() == QuickRole::Part ||
        cls.role() == QuickRole::None) {
        return false;
    }
    switch (QuickClass::of(parent).role()) {
    case QuickRole::StackView:
        return !isInsideQtControls(item);
    case QuickRole::StackLayout:
        return true;
    case QuickRole::Loader:
        if (QuickClass::of(parent).name() == "Tab") {
            return true;
        }
        return !isInRow && cls.role() != QuickRole::Control && cls.role() != QuickRole::Input &&
               !isInsideQtControls(parent) && coversMuch(parent);
    default:
        return swipeViewOf(item) != nullptr;
    }
}

} // namespace UIControls
} // namespace Vorsk
