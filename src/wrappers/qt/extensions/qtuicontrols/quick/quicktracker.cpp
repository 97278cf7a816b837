#include "quicktracker.h"

#include "quicksurvey.h"
#include "quickuses.h"

#include <QEvent>
#include <QPointer>
#include <QQuickWindow>

namespace Vorsk {
namespace UIControls {

QuickTracker::QuickTracker(const TrackerServices& services)
    : m_uses(std::make_unique<QuickUses>(services))
    , m_survey(std::make_unique<QuickSurvey>(services,
                                             [this](QObject* object, ElementType type, UIElement* element) {
                                                 m_uses->watch(object, type, element);
                                             })) {}

QuickTracker::~QuickTracker() {
    // It watches for the other.
    m_survey.reset();
}

void QuickTracker::handleEvent(QObject* object, QEvent* event) {
    switch (event->type()) {
    case QEvent::Expose:
    case QEvent::Show:
        if (auto* const window = qobject_cast<QQuickWindow*>(object)) {
            m_survey->addWindow(window);
        }
        return;
    case QEvent::Hide:
    case QEvent::Close:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::InputMethod:
        // What came since the last frame can be operated already.
        if (auto* const window = qobject_cast<QQuickWindow*>(object)) {
            m_survey->addWindow(window);
            m_survey->update();
        }
        break;
    default:
        break;
    }
    m_uses->handleEvent(object, event);
}

} // namespace UIControls
} // namespace Vorsk
