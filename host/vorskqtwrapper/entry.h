// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/deliveryend.h>

#include <QtGlobal>

// All that libvorskqtwrapper.so exports.
extern "C" {

/**
 * Called by the starter plugin on the GUI thread while the application object is being constructed;
 * harmless when called again.
 */
Q_DECL_EXPORT void vorsk_qtwrapper_start();

/** Found by extensions by its name, and called from initialize() on: see vorsk/deliveryend.h. */
Q_DECL_EXPORT void vorsk_on_delivery_end(Vorsk::DeliveryEndCallback callback);
}
