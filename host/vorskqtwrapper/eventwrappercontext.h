// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/wrappercontext.h>

namespace VorskHost {

class EventTap;

/** What Extension::initialize() gets: the way to the event tap. Never destroyed by the wrapper. */
class EventWrapperContext final : public Vorsk::WrapperContext {
public:
    /** The tap is not owned and has to live as long. */
    explicit EventWrapperContext(EventTap& tap);

    void reserved3() override {}
    void reserved4() override {}
    void reserved5() override {}
    void reserved6() override {}
    void reserved7() override {}
    void reserved8() override {}
    void reserved9() override {}
    void registerEventCallback(const QMetaObject* cls, EventCallback callback) override;

private:
    EventTap& m_tap;
};

} // namespace VorskHost
