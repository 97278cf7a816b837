// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/observerpool.h"

#include "tracking/mappingelementstore.h"
#include "tracking/metamethods.h"

#include <QSet>

#include <algorithm>

namespace Vorsk {
namespace UICoverage {

using UIAbstraction::UIElement;

namespace {

/**
 * Deletes each observer of the list once. The list is a copy: the destructor of each observer calls
 * ObserverPool::forget(), which edits the pool's tables.
 */
void deleteObservers(const std::vector<QtObjectObserver*>& observers) {
    if (observers.size() == 1) {
        delete observers.front();
        return;
    }
    QSet<const QtObjectObserver*> deleted;
    for (QtObjectObserver* observer : observers) {
        if (!deleted.contains(observer)) {
            deleted.insert(observer);
            delete observer;
        }
    }
}

} // namespace

ObserverPool::ObserverPool(MappingElementStore* store)
    : m_store(store) {
    if (m_store != nullptr) {
        m_store->setDeathListener([this](QObject* object) { observedObjectDestroyed(object); });
    }
}

ObserverPool::~ObserverPool() {
    if (m_store != nullptr) {
        m_store->setDeathListener({});
    }
    deleteObservers(m_observersByElement.values());
    // What is left was replaced by another observer of its element, and outlives the pool.
    std::vector<QtObjectObserver*> left = m_firstByObject.values();
    for (const std::vector<QtObjectObserver*>& further : qAsConst(m_furtherByObject)) {
        left.insert(left.end(), further.cbegin(), further.cend());
    }
    for (QtObjectObserver* observer : left) {
        observer->m_pool = nullptr;
    }
}

void ObserverPool::addObserver(UIElement* element, QtObjectObserver* observer) {
    QObject* const object = observer->observedObject();
    deleteDeadObservers(object);
    m_observersByElement[element] = observer;
    QtObjectObserver*& first = m_firstByObject[object];
    if (first == nullptr) {
        first = observer;
    } else {
        m_furtherByObject[object].push_back(observer);
    }
    if (observer->m_pool == this) {
        m_furtherPlaces.insert(observer, {element, object});
    } else {
        observer->m_pool = this;
        observer->m_place = {element, object};
    }
    if (m_store == nullptr || m_store->elementForObject(object) == nullptr) {
        static const int objectSlot =
            methodNumber(staticMetaObject, "observedObjectDestroyed(QObject*)");
        connectDestroyed(object, this, objectSlot);
    }
}

bool ObserverPool::hasObserver(UIElement* element) {
    return observerForElement(element) != nullptr;
}

QtObjectObserver* ObserverPool::observerForElement(UIElement* element) {
    QtObjectObserver* const observer = m_observersByElement.value(element);
    if (observer != nullptr && observer->observedObject() == nullptr) {
        delete observer;
        return nullptr;
    }
    return observer;
}

void ObserverPool::observedObjectDestroyed(QObject* object) {
    if (m_furtherByObject.isEmpty()) {
        delete m_firstByObject.value(object);
    } else {
        deleteObservers(observersOf(object));
    }
}

void ObserverPool::observerDestroyed(QObject* object) {
    // Compared, and no more than that.
    auto* const observer = static_cast<QtObjectObserver*>(object);
    const std::vector<const void*> elements = m_observersByElement.keysOf(observer);
    for (const void* element : elements) {
        m_observersByElement.remove(element);
    }
    QSet<QObject*> objects;
    for (const void* watched : m_firstByObject.keysOf(observer)) {
        objects.insert(static_cast<QObject*>(const_cast<void*>(watched))); // NOLINT(*-const-cast)
    }
    for (auto it = m_furtherByObject.cbegin(); it != m_furtherByObject.cend(); ++it) {
        objects.insert(it.key());
    }
    for (QObject* watched : qAsConst(objects)) {
        forgetPlace(observer, {nullptr, watched});
    }
    m_furtherPlaces.remove(object);
}

void ObserverPool::forget(const QtObjectObserver* observer) {
    forgetPlace(observer, observer->m_place);
    if (m_furtherPlaces.isEmpty()) {
        return;
    }
    const QList<Place> places = m_furtherPlaces.values(observer);
    for (const Place& place : places) {
        forgetPlace(observer, place);
    }
    m_furtherPlaces.remove(observer);
}

void ObserverPool::forgetPlace(const QtObjectObserver* observer, const Place& place) {
    if (m_observersByElement.value(place.element) == observer) {
        m_observersByElement.remove(place.element);
    }
    const auto further = m_furtherByObject.find(place.object);
    const bool hasFurther = further != m_furtherByObject.end();
    if (hasFurther) {
        further->erase(std::remove(further->begin(), further->end(), observer), further->end());
    }
    if (m_firstByObject.value(place.object) == observer) {
        if (hasFurther && !further->empty()) {
            m_firstByObject[place.object] = further->front();
            further->erase(further->begin());
        } else {
            m_firstByObject.remove(place.object);
        }
    }
    if (hasFurther && further->empty()) {
        m_furtherByObject.erase(further);
    }
}

/** In the order in which they were added. */
std::vector<QtObjectObserver*> ObserverPool::observersOf(QObject* object) const {
    std::vector<QtObjectObserver*> observers = m_furtherByObject.value(object);
    if (QtObjectObserver* const first = m_firstByObject.value(object)) {
        observers.insert(observers.begin(), first);
    }
    return observers;
}

void ObserverPool::deleteDeadObservers(QObject* object) {
    if (!m_firstByObject.contains(object)) {
        return;
    }
    std::vector<QtObjectObserver*> observers = observersOf(object);
    const auto isAlive = [](const QtObjectObserver* observer) {
        return observer->observedObject() != nullptr;
    };
    observers.erase(std::remove_if(observers.begin(), observers.end(), isAlive), observers.end());
    deleteObservers(observers);
}

} // namespace UICoverage
} // namespace Vorsk
