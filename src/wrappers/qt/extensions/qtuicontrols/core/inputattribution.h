// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/attribution.h"
#include "qtuicontrols/core/deliverystack.h"

#include <QPointer>

#include <vector>

namespace Vorsk {
namespace UIControls {

/** The extension's Attribution: is told of each delivery and answers from what is going on. GUI
 * thread only. */
class InputAttribution final : public Attribution {
public:
    InputAttribution() = default;
    ~InputAttribution() = default;

    /** To be called for each event before a tracker sees it. */
    void begin(QObject* receiver, const QEvent* event);
    /** Where the host tells: the delivery that began with these two is over. They may be dead. */
    void end(const QObject* receiver, const QEvent* event) { m_deliveries.end(receiver, event); }
    /** False as long as end() has nothing to do. */
    bool hasDeliveries() const { return !m_deliveries.isEmpty(); }

    Verdict verdict() const override;
    QObject* lastInputReceiver() const override { return m_lastInputReceiver; }
    bool isOperatedByClient(const QObject* object) override;
    void arm(QObject* object) override;
    void disarm(QObject* object) override;
    bool isArmed(const QObject* object) const override;

private:
    void removeDeadArmed();

    /** Asking finds out what has ended. */
    mutable DeliveryStack m_deliveries;
    QPointer<QObject> m_lastInputReceiver;
    std::vector<QPointer<QObject>> m_armed;
    /** What the present call of an accessibility client operates; an address. */
    const QObject* m_operatedByClient = nullptr;
};

} // namespace UIControls
} // namespace Vorsk
