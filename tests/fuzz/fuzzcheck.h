// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdio>
#include <cstdlib>

/** Ends the process where the condition does not hold, in builds of every type: a finding. */
#define FUZZ_CHECK(condition)                                                                      \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            static_cast<void>(std::fprintf(stderr, "%s:%d: does not hold: %s\n", __FILE__,         \
                                           __LINE__, #condition));                                 \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)
