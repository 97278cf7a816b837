// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tracking/qtobjectobserver.h"
#include "uiabstraction/pointertable.h"

#include <QHash>
#include <QObject>

#include <vector>

namespace Vorsk {
namespace UICoverage {

class MappingElementStore;

/**
 * Owns the observers of one tracker, one for each element, and deletes an observer when the object
 * that it watches dies. An object whose death went unnoticed, because the application cut our
 * connections, counts as destroyed when its observer is next asked for. GUI thread only.
 */
class ObserverPool : public QObject {
    Q_OBJECT

public:
    /**
     * @param store tells of the deaths of the objects that it maps; not owned, outlives the pool.
     *              To any other object, and to all of them when it is null, the pool connects.
     */
    explicit ObserverPool(MappingElementStore* store = nullptr);
    /** Deletes every observer. */
    ~ObserverPool() override;

    /**
     * Takes ownership. An earlier observer of the element is replaced here without being deleted;
     * ask hasObserver() first.
     */
    void addObserver(UIAbstraction::UIElement* element, QtObjectObserver* observer);

    bool hasObserver(UIAbstraction::UIElement* element);
    /** Null when the element has none. The pool keeps ownership. */
    QtObjectObserver* observerForElement(UIAbstraction::UIElement* element);

private Q_SLOTS:
    // The meta-object with both slots is fixed: a host may invoke them by name. Nothing here
    // connects to the second one: observers call forget() when they die.
    void observedObjectDestroyed(QObject* object);
    void observerDestroyed(QObject* object);

private:
    friend class QtObjectObserver;

    using Place = QtObjectObserver::Place;

    void forget(const QtObjectObserver* observer);
    void forgetPlace(const QtObjectObserver* observer, const Place& place);
    std::vector<QtObjectObserver*> observersOf(QObject* object) const;
    void deleteDeadObservers(QObject* object);

    MappingElementStore* m_store;
    UIAbstraction::PointerTable<QtObjectObserver*> m_observersByElement;
    UIAbstraction::PointerTable<QtObjectObserver*> m_firstByObject;
    /** Those that were added later, of the few objects that have several. */
    QHash<QObject*, std::vector<QtObjectObserver*>> m_furtherByObject;
    /** Places other than the one that the observer knows, of one that was added more than once. */
    QMultiHash<const QObject*, Place> m_furtherPlaces;
};

} // namespace UICoverage
} // namespace Vorsk
