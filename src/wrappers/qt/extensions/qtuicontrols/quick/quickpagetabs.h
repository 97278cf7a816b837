// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/quick/quickelements.h"

#include <QPointer>
#include <QQuickItem>

#include <vector>

namespace Vorsk {
namespace UIControls {

/**
 * The tabs of swipe views: a page is reached by swiping, and often by a button of a tab bar that
 * follows the view. Both are the same tab then: a bar beside or around the view with as many
 * buttons, at the same one, is taken for it. Which button that is can only be told once all items
 * of a walk have their elements. GUI thread only.
 */
class QuickPageTabs {
public:
    /** Both outlive this object. */
    QuickPageTabs(ElementBook& book, QuickElements& elements)
        : m_book(book)
        , m_elements(elements) {}

    /** The page, which has an element, gets its tab with the next settle(). */
    void add(QQuickItem* page, QQuickItem* swipeView, UIElement* pageElement,
             const Surroundings& where, const QString& title);
    /** To be called when a walk is over. */
    void settle();
    /** The page has come up and its button is not the current one: they only looked as if they went
     * together, and the page has a tab of its own from now on. */
    void separate(const QObject* page);

private:
    struct Waiting {
        QPointer<QQuickItem> page;
        QPointer<QQuickItem> swipeView;
        UIElement* element;
        Surroundings where;
        QString title;
    };

    ElementBook& m_book;
    QuickElements& m_elements;
    std::vector<Waiting> m_waiting;
    /** Whose tab is a button's. */
    std::vector<Waiting> m_joined;
};

} // namespace UIControls
} // namespace Vorsk
