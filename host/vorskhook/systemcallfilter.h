// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/global.h>

namespace VorskHost {

/**
 * Whether the system filters the system calls of this process (seccomp). Such a filter may end the
 * process for any call that it does not know, and there is no way to ask it first.
 */
VORSK_HOST_EXPORT bool areSystemCallsFiltered();

} // namespace VorskHost
