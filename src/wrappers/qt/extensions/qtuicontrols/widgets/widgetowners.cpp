// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/widgetowners.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QCalendarWidget>
#include <QMenu>
#include <QScrollBar>
#include <QTabBar>

namespace Vorsk {
namespace UIControls {

namespace {

/** Reads what an item view tells only to classes derived from it. */
class ViewState : public QAbstractItemView {
public:
    static bool isEditing(const QAbstractItemView* view) {
        return (view->*&ViewState::state)() == QAbstractItemView::EditingState;
    }
};

/** What scrolls a control is no part of it: who scrolls has not operated it. */
bool isForScrolling(const QWidget* widget) {
    return qobject_cast<const QScrollBar*>(widget) != nullptr ||
           (qobject_cast<const QAbstractButton*>(widget) != nullptr &&
            qobject_cast<const QTabBar*>(widget->parentWidget()) != nullptr);
}

} // namespace

WidgetOwners::WidgetOwners(ElementBook& book)
    : m_book(book) {}

QWidget* WidgetOwners::controlOf(const QObject* receiver) const {
    if (receiver == nullptr || !receiver->isWidgetType()) {
        return nullptr;
    }
    bool leftAPopup = false;
    for (auto* widget = const_cast<QWidget*>(static_cast<const QWidget*>(receiver));
         widget != nullptr; widget = above(widget)) {
        UIElement* const element = isItemEditor(widget) ? nullptr : m_book.elementOf(widget);
        if (element != nullptr && !isView(m_book.typeOf(element))) {
            const ElementType type = m_book.typeOf(element);
            // Popups of other controls, as of buttons, hold things of their own.
            const bool hasParts = type == ElementType::ComboBox || type == ElementType::SpinBox ||
                                  type == ElementType::TextInput;
            return leftAPopup && !hasParts ? nullptr : widget;
        }
        if (isForScrolling(widget)) {
            return nullptr;
        }
        if (const auto* const menu = qobject_cast<const QMenu*>(widget)) {
            return controlOfMenu(menu);
        }
        if (widget->isWindow()) {
            if ((widget->windowFlags() & Qt::WindowType_Mask) != Qt::Popup) {
                return nullptr;
            }
            leftAPopup = true;
        }
    }
    return nullptr;
}

QWidget* WidgetOwners::controlOfMenu(const QMenu* menu) const {
    const QWidget* const parent = menu->parentWidget();
    if (const auto* const outer = qobject_cast<const QMenu*>(parent)) {
        return controlOfMenu(outer);
    }
    QWidget* const control = controlOf(parent);
    UIElement* const element = control == nullptr ? nullptr : m_book.elementOf(control);
    if (element == nullptr) {
        return nullptr;
    }
    switch (m_book.typeOf(element)) {
    case ElementType::ComboBox:
    case ElementType::SpinBox:
    case ElementType::TextInput:
        return control;
    default:
        return qobject_cast<QCalendarWidget*>(control) != nullptr ? control : nullptr;
    }
}

/** The next one on the way from a part to what it is a part of; a popup's is what brought it up. */
QWidget* WidgetOwners::above(const QWidget* widget) const {
    QWidget* const parent = widget->parentWidget();
    // A completer's popup has no parent; keys that it does not want go to the text.
    return parent == nullptr && widget->isWindow() ? widget->focusProxy() : parent;
}

bool WidgetOwners::isItemEditor(const QWidget* widget) {
    const QWidget* const viewport = widget->parentWidget();
    if (viewport == nullptr) {
        return false;
    }
    const auto* const view = qobject_cast<const QAbstractItemView*>(viewport->parentWidget());
    return view != nullptr && view->viewport() == viewport && ViewState::isEditing(view) &&
           view->indexWidget(view->currentIndex()) == widget;
}

QWidget* WidgetOwners::itemEditorOf(QWidget* widget) {
    while (widget != nullptr && !isItemEditor(widget)) {
        widget = widget->isWindow() ? nullptr : widget->parentWidget();
    }
    return widget;
}

} // namespace UIControls
} // namespace Vorsk
