// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/qtobjectobserver.h"

#include "tracking/observerpool.h"

namespace Vorsk {
namespace UICoverage {

QtObjectObserver::QtObjectObserver(QObject* observedObject, UIAbstraction::UIElement* element,
                                   UICoverageTracker* tracker)
    : m_observedObject(observedObject)
    , m_element(element)
    , m_tracker(tracker) {}

QtObjectObserver::~QtObjectObserver() {
    if (m_pool != nullptr) {
        m_pool->forget(this);
    }
}

void QtObjectObserver::objectDestroyed() {
    // The pool deletes this observer, and nothing else is left to do; so nothing is connected to
    // this, which would be done for each object of the application and once more undone.
}

} // namespace UICoverage
} // namespace Vorsk
