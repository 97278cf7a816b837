#include "qtobjectobserver.h"

#include "metamethods.h"
#include "observerpool.h"

namespace Vorsk {
namespace UICoverage {

QtObjectObserver::QtObjectObserver(QObject* observedObject, UIAbstraction::UIElement* element,
                                   UICoverageTracker* tracker)
    : m_observedObject(observedObject)
    , m_element(element)
    , m_tracker(tracker) {
    static const int slot = methodNumber(staticMetaObject, "objectDestroyed()");
    connectDestroyed(observedObject, this, slot);
}

QtObjectObserver::~QtObjectObserver() {
    if (m_pool != nullptr) {
        m_pool->forget(this);
    }
}

void QtObjectObserver::objectDestroyed() {
    // The pool deletes this observer; nothing else is left to do.
}

} // namespace UICoverage
} // namespace Vorsk
