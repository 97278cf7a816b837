// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "vorskqtwrapper/notifyinterceptor.h"

#include <vorsk/deliveryend.h>
#include <vorsk/wrappercontext.h>

#include <QEvent>
#include <QObject>

#include <vector>

#include <pthread.h>

namespace VorskHost {

/**
 * Hands every event delivery on the GUI thread to the registered callbacks, exactly once, before
 * the receiver sees it, and consumes none. One object, made by the wrapper and never destroyed.
 *
 * It stands in two places: in front of the application's notify(), where every delivery begins,
 * and as an application event filter, which also sees an event that notify() passes on to a
 * parent. The one thing that it cannot see is such a passing on that an application event filter
 * installed after ours swallows.
 */
class EventTap final : public QObject {
public:
    using Callback = Vorsk::WrapperContext::EventCallback;

    /** The one tap; made on first use, on the GUI thread. */
    static EventTap& instance();

    /** From now on the callback gets what is delivered to objects of this class and below. */
    void add(const QMetaObject* cls, Callback callback);

    /** From now on the callback is told of the end of each delivery. */
    void addEnd(Vorsk::DeliveryEndCallback callback);

    /**
     * Watches the application that runs now, unless nobody wants its events. The first add() does
     * this; it has to be called when a process makes a further application.
     */
    void watch();

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    struct Registration {
        const QMetaObject* cls;
        Callback callback;
    };

    /** A delivery that has begun; lives on the stack of notify(). */
    class Delivery {
    public:
        Delivery(EventTap& owner, QObject* to, QEvent* what);
        ~Delivery();
        Q_DISABLE_COPY(Delivery)

        EventTap& tap;
        QObject* receiver;
        QEvent* event;
        QEvent::Type type;
        bool reachedFilters = false;
        Delivery* outer;
    };

    EventTap() = default;
    ~EventTap() override = default;
    Q_DISABLE_COPY(EventTap)

    static bool notify(QCoreApplication* application, QObject* receiver, QEvent* event);
    bool handOver(QObject* receiver, QEvent* event);

    std::vector<Registration> m_registrations;
    std::vector<Vorsk::DeliveryEndCallback> m_endCallbacks;
    NotifyInterceptor m_interceptor;
    Delivery* m_innermost = nullptr;
    pthread_t m_guiThread = pthread_self();
    bool m_canIntercept = true;
};

} // namespace VorskHost
