// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/quick/quickelements.h"
#include "qtuicontrols/quick/quickpagetabs.h"

#include <QHash>
#include <QPointer>

#include <functional>

QT_BEGIN_NAMESPACE
class QQuickItem;
class QQuickWindow;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class QuickClass;
class QuickContainers;

/**
 * The way through a window's items and what belongs to them: tells views from controls from what is
 * looked into. Stops at each control, whose parts are not looked at, and at what it has been at
 * before. GUI thread only.
 */
class QuickWalk {
public:
    using AddWindow = std::function<void(QQuickWindow* window)>;

    /** All but the last outlive this object. @param addWindow is told of windows that windows have
     */
    QuickWalk(ElementBook& book, QuickViews& views, QuickElements& elements,
              QuickContainers& containers, AddWindow addWindow);

    /** Makes the window a view, unless a widget shows it, and looks at all that it holds. */
    void lookAtWindow(QQuickWindow* window);
    /** Looks at what is new in an item that was looked into before. */
    void lookAtContainer(QQuickItem* container);
    /** To be called when all that is new was looked at. */
    void finish() { m_pageTabs.settle(); }
    QuickPageTabs& pageTabs() { return m_pageTabs; }

private:
    UIElement* viewOf(QQuickWindow* window);
    Surroundings surroundingsOf(QQuickItem* container);
    void visitChildren(QQuickItem* item, const Surroundings& within);
    void visitChild(QQuickItem* item, Surroundings& where, bool isPage);
    void visitItem(QQuickItem* item, const QuickClass& cls, const Surroundings& where);
    void visitControl(QQuickItem* item, const QuickClass& cls, const Surroundings& where);
    void visitInput(QQuickItem* item, const QuickClass& cls, const Surroundings& where);
    void visitPopupItem(QQuickItem* item, const Surroundings& where);
    /** What belongs to an object without being an item: handlers, actions, shortcuts, popups,
     * windows. */
    void visitObjects(const QObject* object, const Surroundings& where, int depth);
    void visitPopup(QObject* popup, const QuickClass& cls, const Surroundings& where);

    UIElement* addPage(QQuickItem* page, const Surroundings& where);
    bool isKnown(const QQuickItem* item) const;

    ElementBook& m_book;
    QuickViews& m_views;
    QuickElements& m_elements;
    QuickContainers& m_containers;
    QuickPageTabs m_pageTabs;
    AddWindow m_addWindow;
    /** Popups that were looked into. */
    QHash<const QObject*, QPointer<QObject>> m_popups;
};

} // namespace UIControls
} // namespace Vorsk
