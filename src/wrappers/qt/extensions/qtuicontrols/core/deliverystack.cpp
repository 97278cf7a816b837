// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/core/deliverystack.h"

#include "qtuicontrols/eventkinds.h"

#include <QThread>

#include <algorithm>
#include <functional>

namespace Vorsk {
namespace UIControls {

namespace {

/** Reads what every QObject knows about itself but shows only to classes derived from it. */
class ObjectState : public QObject {
public:
    /** True from the beginning of ~QObject on, when no QPointer may be made any more. */
    static bool isBeingDestroyed(const QObject* object) {
        return (object->*&ObjectState::d_ptr)->wasDeleted;
    }
};

/** Whether an event loop delivers it, so that it may be what the program has begun by itself. */
bool isFromEventLoop(QEvent::Type type) {
    switch (type) {
    case QEvent::Timer:
    case QEvent::MetaCall:
    case QEvent::SockAct:
    case QEvent::SockClose:
    case QEvent::ZeroTimerEvent:
    case QEvent::DeferredDelete:
        return true;
    default:
        return type >= QEvent::User;
    }
}

} // namespace

void DeliveryStack::begin(QObject* receiver, const QEvent* event, QEvent::Type type,
                          const void* frame) {
    const bool isOfUser = isInput(type);
    if (m_deliveries.empty() && !isOfUser && !m_keepsAll) {
        return;
    }
    prune(frame);
    if (!isOfUser &&
        ((m_deliveries.empty() && !m_keepsAll) || (!m_hearsEnds && !isFromEventLoop(type)))) {
        return;
    }
    Delivery delivery;
    delivery.receiver = receiver;
    delivery.event = event;
    delivery.type = type;
    delivery.frame = frame;
    delivery.loopLevel = QThread::currentThread()->loopLevel();
    if ((isOfUser || m_keepsAll) && !ObjectState::isBeingDestroyed(receiver)) {
        delivery.living = receiver;
    }
    m_deliveries.push_back(std::move(delivery));
}

void DeliveryStack::end(const QObject* receiver, const QEvent* event) {
    m_hearsEnds = true;
    const auto isIt = [&](const Delivery& delivery) {
        return delivery.event == event && delivery.receiver == receiver;
    };
    const auto last = std::find_if(m_deliveries.rbegin(), m_deliveries.rend(), isIt);
    if (last != m_deliveries.rend()) {
        m_deliveries.erase(last.base() - 1, m_deliveries.end());
    }
}

const DeliveryStack::Delivery* DeliveryStack::innermost(const void* frame) {
    prune(frame);
    return m_deliveries.empty() ? nullptr : &m_deliveries.back();
}

void DeliveryStack::prune(const void* frame) {
    if (m_deliveries.empty()) {
        return;
    }
    const int loopLevel = QThread::currentThread()->loopLevel();
    while (!m_deliveries.empty() && (std::less_equal<>()(m_deliveries.back().frame, frame) ||
                                     m_deliveries.back().loopLevel > loopLevel)) {
        m_deliveries.pop_back();
    }
}

} // namespace UIControls
} // namespace Vorsk
