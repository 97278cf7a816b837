// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QPointer>

namespace Vorsk {

namespace UIAbstraction {
class UIElement;
}

namespace UICoverage {

class ObserverPool;
class UICoverageTracker;

/**
 * Watches one toolkit object on behalf of one element. Owned by its tracker's ObserverPool, which
 * deletes it when the object dies; owns nothing itself. GUI thread only.
 */
class QtObjectObserver : public QObject {
    Q_OBJECT

public:
    QtObjectObserver(QObject* observedObject, UIAbstraction::UIElement* element,
                     UICoverageTracker* tracker);
    ~QtObjectObserver() override;

    /** Null once the object has died. */
    QObject* observedObject() const { return m_observedObject; }
    UIAbstraction::UIElement* element() const { return m_element; }
    UICoverageTracker* tracker() const { return m_tracker; }

private Q_SLOTS:
    /** Does nothing and is connected to nothing; the meta-object that holds it is fixed. */
    void objectDestroyed();

private:
    friend class ObserverPool;

    /** Where an observer stands in its pool. */
    struct Place {
        UIAbstraction::UIElement* element = nullptr;
        QObject* object = nullptr;
    };

    QPointer<QObject> m_observedObject;
    UIAbstraction::UIElement* m_element;
    UICoverageTracker* m_tracker;
    /** Told of this observer's death by a call, which costs less than a connection each. */
    ObserverPool* m_pool = nullptr;
    Place m_place;
};

} // namespace UICoverage
} // namespace Vorsk
