// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/keepfreed.h"

#include <array>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

// No container that would give memory back itself.
constexpr std::size_t capacity = 100000;
std::array<void*, capacity> kept;
std::size_t keptCount = 0;
bool keeping = false;

} // namespace

#if !defined(__SANITIZE_ADDRESS__)

// The library's operator new takes the memory from malloc, and so does not need to be replaced.
// NOLINTBEGIN(cert-dcl54-cpp, misc-new-delete-overloads)

void operator delete(void* memory) noexcept {
    if (keeping && keptCount < capacity) {
        kept[keptCount++] = memory;
    } else {
        std::free(memory);
    }
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

// NOLINTEND(cert-dcl54-cpp, misc-new-delete-overloads)

#endif

namespace TestLib {

KeepFreed::KeepFreed() {
    keeping = true;
}

KeepFreed::~KeepFreed() {
    keeping = false;
    while (keptCount > 0) {
        std::free(kept[--keptCount]);
    }
}

} // namespace TestLib
