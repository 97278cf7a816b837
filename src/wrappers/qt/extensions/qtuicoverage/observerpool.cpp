#include "observerpool.h"

#include "metamethods.h"

#include <QSet>

#include <algorithm>

namespace Vorsk {
namespace UICoverage {

using UIAbstraction::UIElement;

namespace {

/**
 * Deletes each observer of the list once. The list is a copy: each deletion comes back through
 * observerDestroyed(), which edits the pool's tables.
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

ObserverPool::ObserverPool() = default;

ObserverPool::~ObserverPool() {
    deleteObservers({m_observersByElement.cbegin(), m_observersByElement.cend()});
    // What is left was replaced by another observer of its element, and outlives the pool.
    for (const std::vector<QtObjectObserver*>& observers : qAsConst(m_observersByObject)) {
        for (QtObjectObserver* observer : observers) {
            observer->m_pool = nullptr;
        }
    }
}

void ObserverPool::addObserver(UIElement* element, QtObjectObserver* observer) {
    QObject* const object = observer->observedObject();
    deleteDeadObservers(object);
    m_observersByElement.insert(element, observer);
    m_observersByObject[object].push_back(observer);
    m_places.insert(observer, {element, object});
    static const int objectSlot =
        methodNumber(staticMetaObject, "observedObjectDestroyed(QObject*)");
    connectDestroyed(object, this, objectSlot);
    observer->m_pool = this;
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
    deleteObservers(m_observersByObject.value(object));
}

void ObserverPool::observerDestroyed(QObject* object) {
    for (auto place = m_places.constFind(object);
         place != m_places.constEnd() && place.key() == object; ++place) {
        forgetPlace(object, *place);
    }
    m_places.remove(object);
}

void ObserverPool::forgetPlace(const QObject* observer, const Place& place) {
    // Entries are removed by their key: erasing at a place looks for the next one, which is far in
    // a table that empties. The dying observer is compared by its address only.
    if (m_observersByElement.value(place.element) == observer) {
        m_observersByElement.remove(place.element);
    }
    const auto watched = m_observersByObject.find(place.object);
    if (watched == m_observersByObject.end()) {
        return;
    }
    watched->erase(std::remove(watched->begin(), watched->end(), observer), watched->end());
    if (watched->empty()) {
        m_observersByObject.remove(place.object);
    }
}

void ObserverPool::deleteDeadObservers(QObject* object) {
    std::vector<QtObjectObserver*> observers = m_observersByObject.value(object);
    const auto isAlive = [](const QtObjectObserver* observer) {
        return observer->observedObject() != nullptr;
    };
    observers.erase(std::remove_if(observers.begin(), observers.end(), isAlive), observers.end());
    deleteObservers(observers);
}

} // namespace UICoverage
} // namespace Vorsk
