// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskqtwrapper/eventtap.h"

#include "vorskhook/hostlogging.h"

#include <QCoreApplication>
#include <QPointer>

namespace VorskHost {

namespace {

/** Reads what every QObject knows about itself but shows only to classes derived from it. */
class ObjectState : public QObject {
public:
    /** True from the beginning of ~QObject on, when no QPointer may be made any more. */
    static bool isBeingDestroyed(const QObject* object) {
        return (object->*&ObjectState::d_ptr)->wasDeleted;
    }
};

} // namespace

EventTap::Delivery::Delivery(EventTap& owner, QObject* to, QEvent* what)
    : tap(owner)
    , receiver(to)
    , event(what)
    , type(what->type())
    , outer(owner.m_innermost) {
    tap.m_innermost = this;
}

EventTap::Delivery::~Delivery() {
    // Not always the innermost one: an application may switch stacks within a delivery.
    Delivery** link = &tap.m_innermost;
    while (*link != this) {
        link = &(*link)->outer;
    }
    *link = outer;
    // By index: a callback may register another.
    // NOLINTNEXTLINE(modernize-loop-convert)
    for (size_t i = 0; i < tap.m_endCallbacks.size(); ++i) {
        tap.m_endCallbacks[i](receiver, event);
    }
}

EventTap& EventTap::instance() {
    static auto* tap = new EventTap;
    return *tap;
}

void EventTap::add(const QMetaObject* cls, Callback callback) {
    m_registrations.push_back({cls, callback});
    if (m_registrations.size() == 1) {
        watch();
    }
}

void EventTap::addEnd(Vorsk::DeliveryEndCallback callback) {
    m_endCallbacks.push_back(callback);
}

void EventTap::watch() {
    if (m_registrations.empty() || QCoreApplication::instance() == nullptr) {
        return;
    }
    m_canIntercept = m_interceptor.attach(QCoreApplication::instance(), notify);
    if (!m_canIntercept) {
        reportProblem(QStringLiteral("events-incomplete: another tool stands in front of the "
                                     "application's notify(); events that the application's own "
                                     "event filters swallow are not seen, run without that tool"));
    }
    QCoreApplication::instance()->installEventFilter(this);
}

/** Stands in for QCoreApplication::notify() of the application, on all threads. */
bool EventTap::notify(QCoreApplication* application, QObject* receiver, QEvent* event) {
    EventTap& tap = instance();
    const NotifyInterceptor::Notify original = tap.m_interceptor.original();
    if (pthread_equal(pthread_self(), tap.m_guiThread) == 0 || receiver == nullptr ||
        event == nullptr) {
        return original(application, receiver, event);
    }
    const Delivery delivery(tap, receiver, event);
    return !tap.handOver(receiver, event) || original(application, receiver, event);
}

bool EventTap::eventFilter(QObject* receiver, QEvent* event) {
    // The constructors of the application's class were not through when the watching began.
    if (m_canIntercept && !m_interceptor.isAttached(QCoreApplication::instance()) &&
        !QCoreApplication::closingDown()) {
        m_canIntercept = m_interceptor.attach(QCoreApplication::instance(), notify);
    }
    // Some applications and some of Qt's own deliveries pass on a copy of the event, so a delivery
    // is known again by its receiver and its type.
    Delivery* delivery = m_innermost;
    if (delivery != nullptr && !delivery->reachedFilters && delivery->receiver == receiver &&
        delivery->type == event->type()) {
        delivery->reachedFilters = true;
        return false;
    }
    return !handOver(receiver, event);
}

/** False when the receiver did not survive it: nobody may touch it any more. */
bool EventTap::handOver(QObject* receiver, QEvent* event) {
    const bool isDying = ObjectState::isBeingDestroyed(receiver);
    const QPointer<QObject> alive(isDying ? nullptr : receiver);
    // By index: a callback may register another.
    for (size_t i = 0; i < m_registrations.size() && (isDying || !alive.isNull()); ++i) {
        const Registration registration = m_registrations[i];
        if (registration.cls == &QObject::staticMetaObject ||
            receiver->metaObject()->inherits(registration.cls)) {
            registration.callback(receiver, event);
        }
    }
    return isDying || !alive.isNull();
}

} // namespace VorskHost
