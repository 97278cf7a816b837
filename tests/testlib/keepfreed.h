// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

namespace TestLib {

/**
 * While one lives, memory that the program gives back is kept instead, so that code outside of this
 * project that goes on with a dead object, as Qt does with a widget that is deleted in its own
 * paintEvent, finds what was there. Under a sanitizer, which keeps freed memory anyway and watches
 * who touches it, this does nothing.
 *
 * For programs that link testlib_keepfreed: it replaces their operator delete. GUI thread only.
 */
class KeepFreed {
public:
    KeepFreed();
    ~KeepFreed();
    KeepFreed(const KeepFreed&) = delete;
    KeepFreed& operator=(const KeepFreed&) = delete;
};

} // namespace TestLib
