// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/global.h>

QT_BEGIN_NAMESPACE
class QEvent;
class QObject;
QT_END_NAMESPACE

namespace Vorsk {

// What a host may offer beside WrapperContext, whose callbacks tell only that a delivery begins.
// The library that holds the code of the context exports a C function of the name below; an
// extension finds the library by the address of the context's virtual table (dladdr) and the
// function by its name (dlsym). A host without it is as good as any other.

/**
 * Told that a delivery has ended, on the GUI thread, the innermost first; also when an exception
 * ends it. Both are addresses only: receiver and event may be dead. Must not throw.
 *
 * There is one end for each delivery, with what it began with. A begin in between with another
 * receiver or event belongs to that delivery, as when it was passed on to a parent, and has no end
 * of its own.
 */
using DeliveryEndCallback = void (*)(QObject* receiver, QEvent* event);

/** The function: has the callback called at the end of every delivery from now on, for ever. */
using OnDeliveryEnd = void (*)(DeliveryEndCallback callback);

/** Its name. */
constexpr char onDeliveryEndName[] = "vorsk_on_delivery_end";

} // namespace Vorsk
