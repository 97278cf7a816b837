// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QHash>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <vector>

QT_BEGIN_NAMESPACE
class QMenu;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/**
 * The views among the widgets: windows, dialogs, menus, popups, and the pages of what shows one of
 * them at a time. Makes their elements and counts that they were seen. A view that is a control as
 * well, as a tree that is the page of a tab widget, has an element for each; the book knows the
 * control by the widget then, and the view is known here only. GUI thread only.
 */
class WidgetViews {
public:
    /** Called when a view has come up so that a person can see it. */
    using SeenListener = std::function<void(QWidget* widget, UIElement* view)>;

    explicit WidgetViews(ElementBook& book);
    ~WidgetViews();
    Q_DISABLE_COPY(WidgetViews)

    void setSeenListener(SeenListener listener) { m_seenListener = std::move(listener); }

    /**
     * The element of the nearest view that the widget lies in, itself included, made now where it
     * is missing; null when the widget lies in nothing that a person could see, as in a widget
     * without a parent that was never shown.
     */
    UIElement* viewOf(QWidget* widget);
    /** The widget of that view; null without one. */
    QWidget* viewWidgetOf(QWidget* widget) const;

    /** Whether the widget itself is a view by its class and place. */
    bool isView(const QWidget* widget) const;
    /** The view that the widget itself is, if it has an element; else null. Does not touch it. */
    UIElement* knownView(const QWidget* widget) const;

    // What happens to any widget, to be called when it gets the event.
    void handleShow(QWidget* widget);
    void handleHide(QWidget* widget);
    void handleMove(QWidget* widget);
    /** A window title or the name of a page may have changed. */
    void updateTitle(QWidget* widget);
    /**
     * Something was painted, or input comes in: counts what has come up since.
     * @param operated what gets the input, which a person sees even if the window system has not
     * told of it yet, as a menu that is operated by keys at once; null when something was painted
     */
    void settle(const QObject* operated = nullptr);

private:
    struct View {
        QPointer<QWidget> widget;
        UIElement* element = nullptr;
        bool isShowing = false;
    };

    bool typeOf(const QWidget* widget, ElementType* type) const;
    UIElement* make(QWidget* widget, ElementType type);
    UIElement* parentViewOf(QWidget* widget, ElementType type);
    UIElement* viewAboveMenu(QMenu* menu);
    void setShowing(View& view, bool isShowing);
    void forgetDead();

    ElementBook& m_book;
    SeenListener m_seenListener;
    QHash<const QWidget*, View> m_views;
    /** Shown, and not seen since. */
    std::vector<QPointer<QWidget>> m_comingUp;
    /** Whose views above are being looked for: two menus may open each other. */
    std::vector<const QMenu*> m_path;
    int m_sizeToClean = 256;
};

} // namespace UIControls
} // namespace Vorsk
