// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quicktracker.h"

#include "qtuicontrols/quick/quicksurvey.h"
#include "qtuicontrols/quick/quickuses.h"

#include <QEvent>

namespace Vorsk {
namespace UIControls {

QuickTracker::QuickTracker(const TrackerServices& services)
    : m_uses(std::make_unique<QuickUses>(services))
    , m_survey(std::make_unique<QuickSurvey>(
          services, [this](QObject* object, ElementType type, UIElement* element) {
              m_uses->watch(object, type, element);
          })) {
    m_uses->setParts(m_survey->parts(), m_survey->pageTabs());
}

QuickTracker::~QuickTracker() {
    // It watches for the other.
    m_survey.reset();
}

void QuickTracker::handleEvent(QObject* object, QEvent* event) {
    m_survey->handleEvent(object, event);
    m_uses->handleEvent(object, event);
}

} // namespace UIControls
} // namespace Vorsk
