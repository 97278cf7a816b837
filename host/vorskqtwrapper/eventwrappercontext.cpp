// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskqtwrapper/eventwrappercontext.h"

#include "vorskqtwrapper/eventtap.h"

namespace VorskHost {

EventWrapperContext::EventWrapperContext(EventTap& tap)
    : m_tap(tap) {}

void EventWrapperContext::registerEventCallback(const QMetaObject* cls, EventCallback callback) {
    if (cls != nullptr && callback != nullptr) {
        m_tap.add(cls, callback);
    }
}

} // namespace VorskHost
