#include "observerpool.h"

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
void deleteObservers(const QList<QtObjectObserver*>& observers) {
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
    deleteObservers(m_observersByElement.values());
}

void ObserverPool::addObserver(UIElement* element, QtObjectObserver* observer) {
    QObject* const object = observer->observedObject();
    deleteDeadObservers(object);
    m_observersByElement.insert(element, observer);
    m_observersByObject[object].append(observer);
    m_places.insert(observer, {element, object});
    connect(object, SIGNAL(destroyed(QObject*)), this, SLOT(observedObjectDestroyed(QObject*)));
    connect(observer, SIGNAL(destroyed(QObject*)), this, SLOT(observerDestroyed(QObject*)));
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
    const QList<Place> places = m_places.values(object);
    m_places.remove(object);
    for (const Place& place : places) {
        const auto byElement = m_observersByElement.constFind(place.element);
        if (byElement != m_observersByElement.constEnd() && byElement.value() == object) {
            m_observersByElement.erase(byElement);
        }
        const auto byObject = m_observersByObject.find(place.object);
        if (byObject == m_observersByObject.end()) {
            continue;
        }
        // The dying observer is compared by its address only.
        const auto isDying = [object](const QtObjectObserver* observer) {
            return observer == object;
        };
        byObject->erase(std::remove_if(byObject->begin(), byObject->end(), isDying),
                        byObject->end());
        if (byObject->isEmpty()) {
            m_observersByObject.erase(byObject);
        }
    }
}

void ObserverPool::deleteDeadObservers(QObject* object) {
    QList<QtObjectObserver*> observers = m_observersByObject.value(object);
    const auto isAlive = [](const QtObjectObserver* observer) {
        return observer->observedObject() != nullptr;
    };
    observers.erase(std::remove_if(observers.begin(), observers.end(), isAlive), observers.end());
    deleteObservers(observers);
}

} // namespace UICoverage
} // namespace Vorsk
