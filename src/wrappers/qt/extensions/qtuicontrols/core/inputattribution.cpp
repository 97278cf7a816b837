// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/core/inputattribution.h"

#include <algorithm>
#include <cstring>

namespace Vorsk {
namespace UIControls {

namespace {

/** The class of Qt's accessibility bridge to D-Bus; each call of a client is a queued call to it.
 */
bool isAccessibilityCall(const QObject* receiver, QEvent::Type type) {
    return type == QEvent::MetaCall &&
           std::strcmp(receiver->metaObject()->className(), "AtSpiAdaptor") == 0;
}

const void* presentFrame() {
    return __builtin_frame_address(0);
}

} // namespace

void InputAttribution::note(QObject* receiver, const QEvent* event, QEvent::Type type) {
    if (isAccessibilityCall(receiver, type)) {
        m_hasClient = true;
        m_operatedByClient = nullptr;
        m_deliveries.setKeepsAll(true);
        m_deliveries.begin(receiver, event, type, presentFrame());
        m_deliveries.setKeepsAll(!m_armed.empty());
        return;
    }
    m_deliveries.begin(receiver, event, type, presentFrame());
    if (isDecidedInput(type)) {
        // Guarded once already, where it can be.
        const DeliveryStack::Delivery* const delivery = m_deliveries.last();
        m_lastInputReceiver = delivery == nullptr ? nullptr : delivery->living;
    }
}

Attribution::Verdict InputAttribution::verdict() const {
    const DeliveryStack::Delivery* const innermost = m_deliveries.innermost(presentFrame());
    if (innermost == nullptr) {
        return {};
    }
    Verdict verdict;
    verdict.receiver = innermost->living;
    verdict.type = innermost->type;
    if (isInput(innermost->type)) {
        verdict.cause = Cause::Input;
    } else if (verdict.receiver != nullptr &&
               isAccessibilityCall(verdict.receiver, innermost->type)) {
        verdict.cause = Cause::Accessibility;
    } else if (!m_armed.empty()) {
        verdict.cause = Cause::Later;
    }
    return verdict;
}

bool InputAttribution::isOperatedByClient(const QObject* object) {
    if (verdict().cause != Cause::Accessibility) {
        return false;
    }
    if (m_operatedByClient == nullptr) {
        m_operatedByClient = object;
    }
    return m_operatedByClient == object;
}

void InputAttribution::arm(QObject* object) {
    removeDeadArmed();
    if (!isArmed(object)) {
        m_armed.emplace_back(object);
    }
    m_deliveries.setKeepsAll(true);
}

void InputAttribution::disarm(QObject* object) {
    m_armed.erase(std::remove(m_armed.begin(), m_armed.end(), object), m_armed.end());
    removeDeadArmed();
}

bool InputAttribution::isArmed(const QObject* object) const {
    return std::find(m_armed.begin(), m_armed.end(), object) != m_armed.end();
}

void InputAttribution::removeDeadArmed() {
    m_armed.erase(std::remove(m_armed.begin(), m_armed.end(), nullptr), m_armed.end());
    m_deliveries.setKeepsAll(!m_armed.empty());
}

} // namespace UIControls
} // namespace Vorsk
