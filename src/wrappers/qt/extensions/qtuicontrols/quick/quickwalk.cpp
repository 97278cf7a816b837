// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickwalk.h"

#include "qtuicontrols/quick/quickclass.h"
#include "qtuicontrols/quick/quickcontainers.h"
#include "qtuicontrols/quick/quickgroups.h"
#include "qtuicontrols/quick/quicknames.h"
#include "qtuicontrols/quick/quickpages.h"
#include "qtuicontrols/quick/quickparts.h"
#include "qtuicontrols/quick/quickplaces.h"
#include "qtuicontrols/quick/quickviews.h"
#include "qtuicontrols/quick/quickwidgets.h"

#include <QQuickItem>
#include <QQuickWindow>

#include <utility>

namespace Vorsk {
namespace UIControls {

namespace {

/** Whether another item than itself may be operated within a control: the content of a delegate. */
bool mayHoldControls(const QuickClass& cls) {
    return cls.generation() == 2 &&
           (cls.name().endsWith("Delegate") || cls.name() == "QQuickAbstractButton");
}

bool hasLinks(const QQuickItem* text, const QuickClass& cls) {
    return cls.read(text, QuickClass::TextProperty)
        .toString()
        .contains(QLatin1String("<a "), Qt::CaseInsensitive);
}

bool acceptsPresses(const QQuickItem* area, const QuickClass& cls) {
    return cls.readEnum(area, QuickClass::AcceptedButtons, Qt::LeftButton) != Qt::NoButton;
}

/** Whether what is no item is there only because a control is made of it, as the menu of a text
 * field. */
bool isOfQtControls(const QObject* object, const QuickClass& cls) {
    switch (cls.role()) {
    case QuickRole::Handler:
    case QuickRole::Action:
    case QuickRole::Shortcut:
    case QuickRole::Popup:
        return isInsideQtControls(object);
    default:
        return false;
    }
}

/** What menus and their items of the first generation do their work with. */
bool isPartOfMenu(const QObject* action, const QuickClass& cls) {
    const QObject* const parent = action->parent();
    return cls.name() == "QQuickAction1" && parent != nullptr &&
           (parent->inherits("QQuickMenu1") || parent->inherits("QQuickMenuItem1"));
}

/** An entry of a menu or a menu bar that is no command: what it brings up is a view. */
bool bringsUpMenu(const QQuickItem* item, const QuickClass& cls) {
    return cls.name() == "QQuickMenuBarItem" ||
           (cls.name() == "QQuickMenuItem" &&
            item->property("subMenu").value<QObject*>() != nullptr);
}

/** Of a tab view of the first generation, whose bar is a list of mouse areas. */
bool isTab(const QQuickItem* area) {
    const QQuickItem* const content = area->parentItem();
    const QQuickItem* const list = content == nullptr ? nullptr : content->parentItem();
    const QQuickItem* const bar = list == nullptr ? nullptr : list->parentItem();
    return bar != nullptr && QuickClass::of(bar).name() == "TabBar" &&
           area->property("tabindex").isValid();
}

} // namespace

QuickWalk::QuickWalk(ElementBook& book, QuickViews& views, QuickElements& elements,
                     QuickContainers& containers, AddWindow addWindow)
    : m_book(book)
    , m_views(views)
    , m_elements(elements)
    , m_containers(containers)
    , m_pageTabs(book, elements)
    , m_addWindow(std::move(addWindow)) {}

void QuickWalk::lookAtWindow(QQuickWindow* window) {
    Surroundings where;
    where.view = viewOf(window);
    if (where.view == nullptr) {
        where.view = m_elements.addWindow(window);
    }
    visitObjects(window, where, 0);
    m_containers.remember(window->contentItem());
    visitChildren(window->contentItem(), where);
}

/** Its own, or that of the widget that shows it; null when it has none yet. */
UIElement* QuickWalk::viewOf(QQuickWindow* window) {
    for (const QObject* widget = QuickWidgets::widgetOf(window); widget != nullptr;
         widget = widget->parent()) {
        if (UIElement* const view = m_book.viewOf(m_book.elementOf(widget))) {
            return view;
        }
    }
    return m_book.elementOf(window);
}

void QuickWalk::lookAtContainer(QQuickItem* container) {
    const Surroundings where = surroundingsOf(container);
    if (where.view != nullptr) {
        visitChildren(container, where);
    }
}

bool QuickWalk::isKnown(const QQuickItem* item) const {
    return m_containers.isKnown(item) || m_book.elementOf(item) != nullptr;
}

/** Found by climbing, for an item that was looked into before. */
Surroundings QuickWalk::surroundingsOf(QQuickItem* container) {
    Surroundings where;
    for (QQuickItem* item = container; item != nullptr && where.view == nullptr;
         item = item->parentItem()) {
        QObject* object = item;
        if (QuickClass::of(item).role() == QuickRole::PopupItem && item->parent() != nullptr) {
            object = item->parent();
        }
        UIElement* const element = m_book.elementOf(object);
        if (element == nullptr) {
            continue;
        }
        where.view = m_book.viewOf(element); // a page may be a control itself
        where.isInControl =
            element != where.view && QuickClass::of(item).role() == QuickRole::Control;
    }
    if (where.view == nullptr && container->window() != nullptr) {
        where.view = viewOf(container->window());
    }
    where.group = groupOf(container);
    where.isInRow = !where.group.isNull() && isInRow(container);
    return where;
}

void QuickWalk::visitChildren(QQuickItem* item, const Surroundings& within) {
    const QList<QQuickItem*> children = item->childItems();
    if (children.isEmpty()) {
        return;
    }
    SiblingMakers makers(item);
    Surroundings where = within;
    for (QQuickItem* child : children) {
        const QuickClass& cls = QuickClass::of(child);
        if (cls.role() == QuickRole::Text) {
            where.textBefore = child;
        }
        const bool isPageHere = isPageOf(item, child, within.isInRow);
        const bool isNewPage = isPageHere && m_views.findByObject(child) == nullptr;
        if (isKnown(child) && !isNewPage) {
            continue;
        }
        const Maker maker = makers.makerOf(child);
        where.group = makers.groupOf(child, within.group, maker);
        where.isInRow = within.isInRow || maker.makesRows;
        visitChild(child, where, isNewPage);
    }
}

void QuickWalk::visitChild(QQuickItem* item, Surroundings& where, bool isPage) {
    const QuickClass& cls = QuickClass::of(item);
    Surroundings inner = where;
    if (isPage) {
        inner.view = addPage(item, where);
        inner.textBefore = nullptr;
        inner.title.clear();
    }
    switch (cls.role()) {
    case QuickRole::Control:
        visitControl(item, cls, inner);
        where.textBefore = nullptr;
        break;
    case QuickRole::Input:
        visitInput(item, cls, inner);
        where.textBefore = nullptr;
        break;
    case QuickRole::None:
    case QuickRole::Part:
    case QuickRole::Repeater:
        break;
    case QuickRole::PopupItem:
        visitPopupItem(item, inner);
        break;
    default:
        visitItem(item, cls, inner);
        break;
    }
}

/** What is looked into, and may be operated itself. */
void QuickWalk::visitItem(QQuickItem* item, const QuickClass& cls, const Surroundings& where) {
    const bool isOwn = !where.isInControl && m_book.elementOf(item) == nullptr;
    Surroundings inner = where;
    switch (cls.role()) {
    case QuickRole::Text:
        if (isOwn && hasLinks(item, cls)) {
            m_elements.addControl(item, cls, ElementType::Link, where);
        }
        break;
    case QuickRole::Area:
        if (isOwn && isTab(item)) {
            m_elements.addControl(item, cls, ElementType::Tab, where);
        } else if (isOwn && acceptsPresses(item, cls) && !isInsideQtControls(item)) {
            m_elements.addControl(item, cls, ElementType::Area, where);
        }
        break;
    case QuickRole::ItemView:
        if (isOwn && showsRows(item) && !isInsideQtControls(item)) {
            m_elements.addControl(item, cls, cls.type(), where);
        }
        break;
    case QuickRole::Item:
        if (cls.type() == ElementType::GroupBox && isOwn &&
            cls.read(item, QuickClass::Checkable).toBool()) {
            m_elements.addControl(item, cls, ElementType::GroupBox, where);
        }
        break;
    default:
        break;
    }
    const QString title = cls.generation() != 0 ? captionOf(item, cls) : QString();
    if (!title.isEmpty()) {
        inner.title = title;
        inner.isTitleOfPage = extendsClass(item, "QQuickPage");
        inner.textBefore = nullptr;
    }
    // Few ever get children later, and these are the items of which there are most.
    const bool isLeaf = (cls.role() == QuickRole::Text || cls.role() == QuickRole::Area) &&
                        item->childItems().isEmpty();
    if (!isLeaf) {
        m_containers.remember(item);
    }
    visitObjects(item, inner, 0);
    visitChildren(item, inner);
}

void QuickWalk::visitControl(QQuickItem* item, const QuickClass& cls, const Surroundings& where) {
    if (cls.generation() == 1 && isInsideQtControls(item)) {
        return; // a part of another, as the check box of a group box
    }
    if (m_book.elementOf(item) == nullptr && !bringsUpMenu(item, cls)) {
        m_elements.addControl(item, cls, cls.type(), where);
    }
    Surroundings inner = where;
    inner.isInControl = true;
    if (cls.type() != ElementType::ComboBox) {
        visitObjects(item, inner, 0);
    }
    if (mayHoldControls(cls)) {
        inner.textBefore = nullptr;
        m_containers.remember(item);
        visitChildren(item, inner);
    }
}

void QuickWalk::visitInput(QQuickItem* item, const QuickClass& cls, const Surroundings& where) {
    if (m_book.elementOf(item) != nullptr || (where.isInControl && isInsideQtControls(item))) {
        return;
    }
    if (!cls.read(item, QuickClass::ReadOnly).toBool()) {
        m_elements.addControl(item, cls, ElementType::TextInput, where);
    } else if (hasLinks(item, cls)) {
        m_elements.addControl(item, cls, ElementType::Link, where);
    }
}

/** The item of a popup that came to be shown: the popup is a view, unless it is part of a control.
 */
void QuickWalk::visitPopupItem(QQuickItem* item, const Surroundings& where) {
    QObject* const popup = item->parent();
    if (popup == nullptr) {
        return;
    }
    const QuickClass& cls = QuickClass::of(popup);
    UIElement* const owner = m_book.elementOf(popup->parent());
    if (cls.role() != QuickRole::Popup ||
        (owner != nullptr && m_book.typeOf(owner) == ElementType::ComboBox)) {
        return;
    }
    Surroundings outer = where;
    outer.isInControl = false;
    for (QObject* above = popup->parent(); above != nullptr; above = above->parent()) {
        UIElement* const element = m_book.viewOf(m_book.elementOf(above));
        if (element != nullptr) {
            outer.view = element;
            break;
        }
    }
    visitPopup(popup, cls, outer);
}

void QuickWalk::visitObjects(const QObject* object, const Surroundings& where, int depth) {
    constexpr int deepest = 3;
    const QObjectList children = object->children();
    for (QObject* child : children) {
        const QuickClass& cls = QuickClass::of(child);
        switch (isOfQtControls(child, cls) ? QuickRole::Part : cls.role()) {
        case QuickRole::Handler:
            if (!where.isInControl && m_book.elementOf(child) == nullptr &&
                itemOf(child) != nullptr) {
                m_elements.addControl(child, cls, ElementType::Area, where);
            }
            break;
        case QuickRole::Action:
        case QuickRole::Shortcut:
            if (m_book.elementOf(child) == nullptr && !isPartOfMenu(child, cls)) {
                m_elements.addControl(child, cls, ElementType::Command, where);
            }
            break;
        case QuickRole::Popup:
            visitPopup(child, cls, where);
            break;
        case QuickRole::Window:
            m_addWindow(static_cast<QQuickWindow*>(child));
            break;
        case QuickRole::None:
            if (depth < deepest && !child->children().isEmpty()) {
                visitObjects(child, where, depth + 1);
            }
            break;
        default: // items come by their parent items
            break;
        }
    }
}

void QuickWalk::visitPopup(QObject* popup, const QuickClass& cls, const Surroundings& where) {
    QPointer<QObject>& known = m_popups[popup];
    if (!known.isNull() && m_book.elementOf(popup) != nullptr) {
        return;
    }
    known = popup;
    UIElement* element = m_book.elementOf(popup);
    if (element == nullptr) {
        element = m_elements.addView(popup, cls, cls.type(), where, QString());
    }
    Surroundings inner;
    inner.view = element;
    inner.group = where.group;
    inner.isInRow = where.isInRow;
    visitObjects(popup, inner, 0);
    if (QQuickItem* const item = itemOf(popup)) {
        m_containers.remember(item);
        visitChildren(item, inner);
    }
}

UIElement* QuickWalk::addPage(QQuickItem* page, const Surroundings& where) {
    const QString title = titleOfPage(page);
    UIElement* const element =
        m_elements.addView(page, QuickClass::of(page), ElementType::Page, where, title);
    QQuickItem* const swipeView = swipeViewOf(page);
    if (swipeView != nullptr && swipeView->property("interactive") != QVariant(false)) {
        m_pageTabs.add(page, swipeView, element, where, title);
    }
    return element;
}

} // namespace UIControls
} // namespace Vorsk
