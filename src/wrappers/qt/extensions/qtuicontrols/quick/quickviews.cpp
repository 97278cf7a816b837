// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickviews.h"

#include "qtuicontrols/quick/quickclass.h"
#include "qtuicontrols/quick/quickplaces.h"
#include "qtuicontrols/quick/quickwidgets.h"

#include <algorithm>

namespace Vorsk {
namespace UIControls {

namespace {

/** Whether the page is the one that its swipe view shows; true for all others. */
bool isCurrent(const QQuickItem& page) {
    // The pages of a swipe view lie side by side in the content item of the view that is its
    // content item.
    const QQuickItem* parent = page.parentItem();
    for (int i = 0; i < 2 && parent != nullptr; ++i) {
        parent = parent->parentItem();
    }
    if (parent == nullptr || QuickClass::of(parent).role() != QuickRole::SwipeView) {
        return true;
    }
    return parent->property("currentItem").value<QQuickItem*>() == &page;
}

} // namespace

void QuickViews::add(QObject* object, UIElement* element) {
    m_views.erase(std::remove_if(m_views.begin(), m_views.end(),
                                 [element](const QuickView& view) {
                                     return view.object.isNull() &&
                                            (view.element == element || !view.isShowing);
                                 }),
                  m_views.end());
    QuickView view;
    view.object = object;
    view.item = itemOf(object);
    view.element = element;
    m_views.push_back(view);
}

void QuickViews::addControl(const QuickControl& control, UIElement* element) {
    QuickView* const view = find(m_book.viewOf(element));
    append(control, view == nullptr ? m_inWidgets : view->controls, m_book);
}

/** Drops those that have died, now and then. */
void QuickViews::append(const QuickControl& control, std::vector<QuickControl>& controls,
                        ElementBook& book) {
    constexpr std::size_t few = 64;
    if (controls.size() >= few && controls.size() == controls.capacity()) {
        controls.erase(std::remove_if(controls.begin(), controls.end(),
                                      [&book](const QuickControl& known) {
                                          return book.elementOf(known.object) == nullptr;
                                      }),
                       controls.end());
        controls.reserve(controls.size() * 2);
    }
    controls.push_back(control);
}

QuickView* QuickViews::find(const UIElement* element) {
    const auto found =
        std::find_if(m_views.begin(), m_views.end(), [element](const QuickView& view) {
            return view.element == element && !view.object.isNull();
        });
    return element == nullptr || found == m_views.end() ? nullptr : &*found;
}

QuickView* QuickViews::findByObject(const QObject* object) {
    const auto found =
        std::find_if(m_views.begin(), m_views.end(),
                     [object](const QuickView& view) { return view.object == object; });
    return object == nullptr || found == m_views.end() ? nullptr : &*found;
}

bool QuickViews::isVisible(const QQuickItem& item) {
    if (!item.isVisible() || !(item.width() > 0) || !(item.height() > 0)) {
        return false;
    }
    for (const QQuickItem* above = &item; above != nullptr; above = above->parentItem()) {
        if (!(above->opacity() > 0)) {
            return false;
        }
    }
    return true;
}

bool QuickViews::canBeSeen(const QuickView& view) const {
    if (view.object.isNull()) {
        return false;
    }
    if (auto* const window = qobject_cast<QQuickWindow*>(view.object.data())) {
        return QuickWidgets::isShown(window);
    }
    if (view.item.isNull()) {
        return QuickClass::of(view.object).generation() == 1 &&
               view.object->property("__popupVisible").toBool();
    }
    QQuickWindow* const window = view.item->window();
    if (window == nullptr || !QuickWidgets::isShown(window) || !isVisible(*view.item) ||
        !isCurrent(*view.item)) {
        return false;
    }
    return placeOf(view.item).intersects(QRect(QuickWidgets::offsetOf(window), window->size()));
}

std::vector<UIElement*> QuickViews::update() {
    std::vector<UIElement*> came;
    for (QuickView& view : m_views) {
        if (view.item.isNull() && !view.object.isNull()) {
            view.item = itemOf(view.object); // a popup's item may be made later
        }
        const bool isShowing = canBeSeen(view);
        if (isShowing == view.isShowing) {
            continue;
        }
        view.isShowing = isShowing;
        m_book.setAttribute(view.element, Attribute::Showing,
                            isShowing ? QStringLiteral("true") : QString());
        if (isShowing) {
            view.hasChanged = true;
            m_book.setPlace(view.element, placeOf(view.object));
            m_book.countUse(view.element, Use::Seen);
            came.push_back(view.element);
        }
    }
    return came;
}

} // namespace UIControls
} // namespace Vorsk
