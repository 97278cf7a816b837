// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

QT_BEGIN_NAMESPACE
class QObject;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/**
 * Says to which control what got an input belongs. Reads plain getters of Qt's own classes and the
 * book, changes nothing. GUI thread only.
 */
class QuickOwners {
public:
    explicit QuickOwners(ElementBook& book);

    /**
     * The control that the object is, or is a part of: the nearest one above it that has an
     * element, by way of popups to what they belong to. Null for what belongs to none, such as the
     * background of a window or of a popup that is a view.
     */
    QObject* controlOf(QObject* receiver) const;

    /**
     * Whether the object is the outer one or lies in it, by the same way, no matter what controls
     * and views are between the two.
     */
    static bool isWithin(QObject* object, const QObject* outer);

    /**
     * What the object is a part of: of an item its parent item, of a popup's item the popup, of a
     * popup the item that it belongs to, of a popup's window of the first generation its menu;
     * else its parent. Null at the end.
     */
    static QObject* outerOf(QObject* object);

    /** The nearest of the object and all outer ones for which the condition holds; null when it
     * holds for none. */
    template <class Condition>
    static QObject* nearest(QObject* object, Condition condition) {
        // Popups may be declared to lie in one another, which never ends; nobody nests a thousand.
        for (int steps = 0; object != nullptr && steps < 1000; ++steps) {
            if (condition(object)) {
                return object;
            }
            object = outerOf(object);
        }
        return nullptr;
    }

private:
    ElementBook& m_book;
};

} // namespace UIControls
} // namespace Vorsk
