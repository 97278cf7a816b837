// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/deliveryend.h>

namespace Vorsk {

class WrapperContext;

namespace UICoverage {

/**
 * Has the callback told of the end of every delivery, where the host that the context belongs to
 * can do that (see vorsk/deliveryend.h).
 * @return false, and the callback is never called, where it cannot
 */
bool registerDeliveryEndCallback(const WrapperContext& context, DeliveryEndCallback callback);

} // namespace UICoverage
} // namespace Vorsk
