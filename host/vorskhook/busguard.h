// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/global.h>

#include <QtGlobal>

#include <cstddef>

namespace VorskHost {

/**
 * Keeps the application alive when a file that is mapped into its memory loses its pages: somebody
 * cut the file short, or its medium failed. While memory is watched, SIGBUS for an address in it
 * puts private memory there in place of the file; every other SIGBUS goes to whoever handled it
 * before. One region at a time, for the whole process.
 */
namespace BusGuard {

/** From now on, in place of what was watched before. */
VORSK_HOST_EXPORT void watch(void* start, std::size_t length);

/** Ends it and gives the signal back, unless somebody has taken it since. */
VORSK_HOST_EXPORT void stopWatching();

/** True when the watched memory no longer belongs to its file. */
VORSK_HOST_EXPORT bool wasHit();

} // namespace BusGuard

} // namespace VorskHost
