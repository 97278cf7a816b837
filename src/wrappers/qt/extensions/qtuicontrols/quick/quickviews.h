// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>

#include <vector>

namespace Vorsk {
namespace UIControls {

/** What can be operated in a view. */
struct QuickControl {
    /** Living or not: for comparison. */
    QObject* object;
    /** Stands for the element of another object, which is the one that is followed. */
    bool isShared;
    /** Its place is told, of the last picture of its view. */
    bool isPlaced = false;
};

/** A view and what is needed to tell whether a person can see it. */
struct QuickView {
    /** The window, the popup or the page. */
    QPointer<QObject> object;
    /** By which it is seen: the window's content item, the popup's item, the page itself. */
    QPointer<QQuickItem> item;
    UIElement* element = nullptr;
    bool isShowing = false;
    std::vector<QuickControl> controls;
    /** The pixels differ from those of its picture, as far as is known. */
    bool hasChanged = true;
    bool hasPicture = false;
};

/** All views of Qt Quick windows, and when each comes up. GUI thread only. */
class QuickViews {
public:
    explicit QuickViews(ElementBook& book)
        : m_book(book) {}

    /** The view is followed from now on. */
    void add(QObject* object, UIElement* element);
    /** Notes that the control belongs to the view of its element. */
    void addControl(const QuickControl& control, UIElement* element);

    QuickView* find(const UIElement* element);
    /** By the window, popup or page; null when it is no view. */
    QuickView* findByObject(const QObject* object);
    std::vector<QuickView>& all() { return m_views; }

    /** Counts those that came up and tells which can be seen. @return those that came up */
    std::vector<UIElement*> update();

    /** Whether a person can see the item, or would, did nothing lie above it. */
    static bool isVisible(const QQuickItem& item);

private:
    bool canBeSeen(const QuickView& view) const;

    ElementBook& m_book;
    std::vector<QuickView> m_views;
};

} // namespace UIControls
} // namespace Vorsk
