#include "mappingelementstore.h"

#include "metamethods.h"

namespace Vorsk {
namespace UICoverage {

using UIAbstraction::UIElement;

MappingElementStore::MappingElementStore() = default;

MappingElementStore::~MappingElementStore() = default;

void MappingElementStore::addMapping(QObject* object, UIElement* element) {
    elementForObject(object); // forgets a dead object at this address
    Mapping& mapping = m_mapping[object];
    if (mapping.element != nullptr) {
        m_objects.remove(mapping.element, object);
    }
    mapping = {element, object};
    m_objects.insert(element, object);
    // Made anew on every call, also for an object that is mapped already.
    static const int slot = methodNumber(staticMetaObject, "objectDestroyed(QObject*)");
    connectDestroyed(object, this, slot);
    // Receivers of the announcement can look the object up already.
    addElement(element);
}

UIElement* MappingElementStore::elementForObject(QObject* object) {
    const auto it = m_mapping.constFind(object);
    if (it == m_mapping.constEnd()) {
        return nullptr;
    }
    if (it->guard.isNull()) {
        objectDestroyed(object);
        return nullptr;
    }
    return it->element;
}

QObject* MappingElementStore::objectForElement(const UIElement* element) {
    // A copy: looking a dead object up takes it out of the tables.
    const QList<QObject*> objects = m_objects.values(element);
    for (QObject* object : objects) {
        if (elementForObject(object) == element) {
            return object;
        }
    }
    return nullptr;
}

void MappingElementStore::objectDestroyed(QObject* object) {
    const auto it = m_mapping.constFind(object);
    if (it == m_mapping.constEnd()) {
        return;
    }
    UIElement* const element = it->element;
    // By the key: erasing at a place looks for the next one, which is far in a table that empties.
    m_mapping.remove(object);
    m_objects.remove(element, object);
    removeFirstEntry(element);
}

} // namespace UICoverage
} // namespace Vorsk
