// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/hook.h>

/**
 * The host's hook for a measurement: counts messages and forgets them, so that what is measured is
 * this side of the boundary. While one lives it is Vorsk::Hook::hook.
 */
class DiscardingHook : public Vorsk::Hook {
public:
    DiscardingHook();
    ~DiscardingHook();

    int messages = 0;
};
