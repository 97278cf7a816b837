// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/attribution.h"
#include "qtuicontrols/core/deliverystack.h"
#include "qtuicontrols/eventkinds.h"

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

    /** To be called for each event before a tracker sees it. @return whether trackers have to see
     * it
     */
    bool begin(QObject* receiver, const QEvent* event) {
        // This is what every event of the application costs.
        const QEvent::Type type = event->type();
        const bool isOfConcern = m_hasClient || concernsTrackers(type);
        if (isOfConcern || m_deliveries.notesAll()) {
            note(receiver, event, type);
        }
        return isOfConcern;
    }
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
    void note(QObject* receiver, const QEvent* event, QEvent::Type type);
    void removeDeadArmed();

    /** Asking finds out what has ended. */
    mutable DeliveryStack m_deliveries;
    QPointer<QObject> m_lastInputReceiver;
    std::vector<QPointer<QObject>> m_armed;
    /** One has called. What its calls have led to is told by whatever event comes next. */
    bool m_hasClient = false;
    /** What the present call of an accessibility client operates; an address. */
    const QObject* m_operatedByClient = nullptr;
};

} // namespace UIControls
} // namespace Vorsk
