#pragma once

#include "qtobjectobserver.h"

#include <QHash>
#include <QObject>

#include <vector>

namespace Vorsk {
namespace UICoverage {

/**
 * Owns the observers of one tracker, one for each element, and deletes an observer when the object
 * that it watches dies. An object whose death went unnoticed, because the application cut our
 * connections, counts as destroyed when its observer is next asked for. GUI thread only.
 */
class ObserverPool : public QObject {
    Q_OBJECT

public:
    ObserverPool();
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
    void observedObjectDestroyed(QObject* object);
    void observerDestroyed(QObject* object);

private:
    friend class QtObjectObserver;

    /** Where an observer stands in the two tables. */
    struct Place {
        UIAbstraction::UIElement* element;
        QObject* object;
    };

    void deleteDeadObservers(QObject* object);
    void forgetPlace(const QObject* observer, const Place& place);

    QHash<UIAbstraction::UIElement*, QtObjectObserver*> m_observersByElement;
    QHash<QObject*, std::vector<QtObjectObserver*>> m_observersByObject;
    /** Found by the dying observer's address, so that nothing has to be searched. */
    QMultiHash<const QObject*, Place> m_places;
};

} // namespace UICoverage
} // namespace Vorsk
