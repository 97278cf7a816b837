// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/global.h>

QT_BEGIN_NAMESPACE
class QEvent;
class QObject;
struct QMetaObject;
QT_END_NAMESPACE

namespace Vorsk {

/**
 * What the Qt wrapper offers to an extension while it is being initialized. Owned by the wrapper.
 *
 * Slots: the destructor takes the first two, registerEventCallback() is the tenth; those between
 * are the host's own.
 */
class WrapperContext {
public:
    /** Receives one event delivery, on the GUI thread, before the receiver sees it. */
    using EventCallback = void (*)(QObject* object, QEvent* event);

    virtual ~WrapperContext() = default;

    virtual void reserved3() = 0;
    virtual void reserved4() = 0;
    virtual void reserved5() = 0;
    virtual void reserved6() = 0;
    virtual void reserved7() = 0;
    virtual void reserved8() = 0;
    virtual void reserved9() = 0;

    /**
     * From now on the callback gets every event that is delivered to an object of class cls or of a
     * class derived from it. There is no way to take it back.
     */
    virtual void registerEventCallback(const QMetaObject* cls, EventCallback callback) = 0;

protected:
    WrapperContext() = default;
    Q_DISABLE_COPY(WrapperContext)
};

} // namespace Vorsk
