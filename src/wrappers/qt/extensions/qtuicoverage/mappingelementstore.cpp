// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/mappingelementstore.h"

#include "tracking/metamethods.h"

namespace Vorsk {
namespace UICoverage {

using UIAbstraction::UIElement;

MappingElementStore::MappingElementStore() = default;

MappingElementStore::~MappingElementStore() = default;

void MappingElementStore::addMapping(QObject* object, UIElement* element) {
    elementForObject(object); // forgets a dead object at this address
    Mapping& mapping = m_mapping[object];
    if (mapping.element != nullptr) {
        forgetObject(mapping.element, object);
    }
    mapping = {element, object};
    QObject*& last = m_lastObject[element];
    if (last != nullptr) {
        m_earlierObjects.insert(element, last);
    }
    last = object;
    // Made anew on every call, also for an object that is mapped already.
    static const int slot = methodNumber(staticMetaObject, "objectDestroyed(QObject*)");
    connectDestroyed(object, this, slot);
    // Receivers of the announcement can look the object up already.
    addElement(element);
}

UIElement* MappingElementStore::elementForObject(QObject* object) {
    const Mapping* const mapping = m_mapping.find(object);
    if (mapping == nullptr) {
        return nullptr;
    }
    if (mapping->guard.isNull()) {
        forget(object);
        return nullptr;
    }
    return mapping->element;
}

QObject* MappingElementStore::objectForElement(const UIElement* element) {
    QObject* const last = m_lastObject.value(element);
    if (last == nullptr || elementForObject(last) == element) {
        return last;
    }
    // A copy: looking a dead object up takes it out of the tables.
    const QList<QObject*> objects = objectsOf(element);
    for (QObject* object : objects) {
        if (elementForObject(object) == element) {
            return object;
        }
    }
    return nullptr;
}

void MappingElementStore::objectDestroyed(QObject* object) {
    forget(object);
    if (m_deathListener) {
        m_deathListener(object);
    }
}

void MappingElementStore::forget(QObject* object) {
    const Mapping* const mapping = m_mapping.find(object);
    if (mapping == nullptr) {
        return;
    }
    UIElement* const element = mapping->element;
    m_mapping.remove(object);
    forgetObject(element, object);
    removeFirstEntry(element);
}

/** The last one that was mapped first. */
QList<QObject*> MappingElementStore::objectsOf(const UIElement* element) const {
    QList<QObject*> objects = m_earlierObjects.values(element);
    if (QObject* const last = m_lastObject.value(element)) {
        objects.prepend(last);
    }
    return objects;
}

void MappingElementStore::forgetObject(const UIElement* element, QObject* object) {
    if (m_lastObject.value(element) != object) {
        m_earlierObjects.remove(element, object);
    } else if (m_earlierObjects.contains(element)) {
        m_lastObject[element] = m_earlierObjects.take(element);
    } else {
        m_lastObject.remove(element);
    }
}

} // namespace UICoverage
} // namespace Vorsk
