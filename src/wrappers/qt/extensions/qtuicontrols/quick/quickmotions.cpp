// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickmotions.h"

#include "qtuicontrols/attribution.h"

#include <QVariant>
#include <QWindow>

#include <algorithm>
#include <cstring>

namespace Vorsk {
namespace UIControls {

QuickMotions::QuickMotions(Attribution& attribution)
    : m_attribution(attribution) {}

void QuickMotions::begin(QObject* object, End end) {
    m_isReleased = false;
    const auto isIt = [object](const Motion& motion) { return motion.object == object; };
    if (std::none_of(m_motions.begin(), m_motions.end(), isIt)) {
        m_motions.push_back({object, end});
        m_attribution.arm(object);
    }
}

void QuickMotions::end(QObject* object) {
    endIf([object](const Motion& motion) { return motion.object == object; });
}

void QuickMotions::noteBegin() {
    if (!m_motions.empty()) {
        endIf([](const Motion& motion) { return !isMoving(motion.object); });
    }
}

void QuickMotions::noteRelease() {
    if (m_motions.empty()) {
        return;
    }
    m_isReleased = true;
    endIf([](const Motion& motion) { return motion.end == End::Release; });
}

/** Called once the release has been delivered, so that what it has set moving is told apart. */
void QuickMotions::endThoseAtRest(QEvent::Type type) {
    if (type == QEvent::Timer || type == QEvent::UpdateRequest) {
        endIf([](const Motion& motion) { return !isMoving(motion.object); });
    }
}

bool QuickMotions::advancesAnimations(const QObject* receiver) {
    if (receiver->isWindowType()) {
        return true; // by its update requests
    }
    // The drivers that Qt has: one of its own for programs without a frame, and render loops.
    const char* const name = receiver->metaObject()->className();
    for (const char* const known :
         {"QDefaultAnimationDriver", "QUnifiedTimer", "QSGAnimationDriver", "QSGThreadedRenderLoop",
          "QSGGuiThreadRenderLoop", "QSGWindowsRenderLoop"}) {
        if (std::strcmp(name, known) == 0) {
            return true;
        }
    }
    return false;
}

bool QuickMotions::isMoving(const QObject* object) {
    return object != nullptr && object->property("moving").toBool();
}

template <class Condition>
void QuickMotions::endIf(Condition condition) {
    const auto ended =
        std::stable_partition(m_motions.begin(), m_motions.end(), [&](const Motion& motion) {
            return !motion.object.isNull() && !condition(motion);
        });
    std::for_each(ended, m_motions.end(),
                  [this](const Motion& motion) { m_attribution.disarm(motion.object); });
    m_motions.erase(ended, m_motions.end());
}

} // namespace UIControls
} // namespace Vorsk
