// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "uiabstraction/pointertable.h"

#include <QObject>
#include <QPointer>

#include <cstddef>

namespace Vorsk {

namespace UIAbstraction {
class UIElement;
}

namespace UIControls {

/**
 * Which element each object of the application stands for. A guard tells whether the object still
 * lives, so that nothing is connected to its death, which would cost each object of the application
 * twice, when it comes and when it goes. What died is found when its address is next asked for, or
 * when the table has doubled. Owns neither. GUI thread only.
 */
class ObjectTable {
public:
    /** What the address stood for before is forgotten. */
    void insert(QObject* object, UIAbstraction::UIElement* element);

    /** Null when it has none, or when another object was there. The object is not touched. */
    UIAbstraction::UIElement* elementOf(const QObject* object) const;

    /** The object that was inserted last for the element; null when it has died or there was none.
     */
    QObject* objectOf(const UIAbstraction::UIElement* element) const;

    std::size_t size() const { return m_elements.size(); }

private:
    struct Entry {
        UIAbstraction::UIElement* element = nullptr;
        QPointer<QObject> living;
    };

    void removeDead();

    UIAbstraction::PointerTable<Entry> m_elements;
    /** By element. */
    UIAbstraction::PointerTable<QObject*> m_objects;
    std::size_t m_sizeToClean = 1024;
};

} // namespace UIControls
} // namespace Vorsk
