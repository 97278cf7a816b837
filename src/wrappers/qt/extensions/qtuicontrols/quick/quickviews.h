#pragma once

#include "qtuicontrols/elementbook.h"

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>

#include <vector>

namespace Vorsk {
namespace UIControls {

/** A view and what is needed to tell whether a person can see it. */
struct QuickView {
    /** The window, the popup or the page. */
    QPointer<QObject> object;
    /** By which it is seen: the window's content item, the popup's item, the page itself. */
    QPointer<QQuickItem> item;
    UIElement* element = nullptr;
    bool isShowing = false;
    /** Its controls, living or not: for comparison. */
    std::vector<QObject*> controls;
    /** The pixels differ from those of its picture, as far as is known. */
    bool hasChanged = true;
};

/** All views of Qt Quick windows, and when each comes up. GUI thread only. */
class QuickViews {
public:
    explicit QuickViews(ElementBook& book)
        : m_book(book) {}

    /** The view is followed from now on. */
    void add(QObject* object, UIElement* element);
    /** Has the element belong to the view that it was added to. */
    void addControl(QObject* control, UIElement* element);

    QuickView* find(const UIElement* element);
    std::vector<QuickView>& all() { return m_views; }

    /** Counts those that came up and tells which can be seen. @return those that came up */
    std::vector<UIElement*> update();

    /** Whether a person can see the item, or would, did nothing lie above it. */
    static bool isVisible(const QQuickItem& item);
    static bool isShown(QQuickWindow& window);

private:
    bool canBeSeen(const QuickView& view) const;

    ElementBook& m_book;
    std::vector<QuickView> m_views;
};

} // namespace UIControls
} // namespace Vorsk
