// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

QT_BEGIN_NAMESPACE
class QMenu;
class QObject;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/**
 * Says to which control what got an input belongs. Reads plain getters and the book, changes
 * nothing. GUI thread only.
 */
class WidgetOwners {
public:
    explicit WidgetOwners(ElementBook& book);

    /**
     * The control that the widget is, or is a part of: the nearest one above it that has an
     * element, by way of popups to what has brought them up (combo box, completer, calendar,
     * context menu of a text). Null for what belongs to none, such as the background of a window, a
     * scroll bar or a tab bar's scroll button.
     */
    QWidget* controlOf(const QObject* receiver) const;

    /**
     * The control that has brought the menu up as a part of itself: a text with its context menu, a
     * calendar with its months. Null for any other menu.
     */
    QWidget* controlOfMenu(const QMenu* menu) const;

    /** Whether an item view has made the widget to edit an item with, now. Such an editor is a part
     * of its view, while a widget that the application has put upon an item is a control by itself.
     */
    static bool isItemEditor(const QWidget* widget);

    /** The item editor that the widget is or lies in; null when it lies in none. */
    static QWidget* itemEditorOf(QWidget* widget);

private:
    QWidget* above(const QWidget* widget) const;

    ElementBook& m_book;
};

} // namespace UIControls
} // namespace Vorsk
