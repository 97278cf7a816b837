// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/extension.h>

#include <cstddef>

/*
 * What lies where in Vorsk::Extension, checked by the compiler. Included by the test, and
 * compiled on its own for 32 bit.
 */

// The class has virtual functions; where its members lie is just the point here.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

constexpr std::size_t nameOffset = offsetof(Vorsk::Extension, name);
constexpr std::size_t pathOffset = offsetof(Vorsk::Extension, path);
constexpr std::size_t optionsOffset = offsetof(Vorsk::Extension, options);

#pragma GCC diagnostic pop

constexpr bool is64Bit = sizeof(void*) == 8;

static_assert(is64Bit || sizeof(void*) == 4, "a platform that nobody has looked at");
static_assert(nameOffset == (is64Bit ? 8 : 4));
static_assert(pathOffset == (is64Bit ? 40 : 28));
static_assert(optionsOffset == (is64Bit ? 72 : 52));
static_assert(sizeof(Vorsk::Extension) == (is64Bit ? 80 : 56));
