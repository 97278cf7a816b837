// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/deliveryends.h"

#include <vorsk/wrappercontext.h>

#include <dlfcn.h>

namespace Vorsk {
namespace UICoverage {

namespace {

/** The function of that name in the library that the address lies in; null when there is none. */
void* functionBeside(const void* address, const char* name) {
    Dl_info library{};
    if (dladdr(address, &library) == 0) {
        return nullptr;
    }
    void* const handle = dlopen(library.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    if (handle == nullptr) {
        return nullptr;
    }
    void* const function = dlsym(handle, name);
    dlclose(handle); // the library stays: the context is in use
    // dlsym() also finds what the library depends on has.
    Dl_info place{};
    const bool isItsOwn = function != nullptr && dladdr(function, &place) != 0 &&
                          place.dli_fbase == library.dli_fbase;
    return isItsOwn ? function : nullptr;
}

} // namespace

bool registerDeliveryEndCallback(const WrapperContext& context, DeliveryEndCallback callback) {
    // An object of a class with virtual functions begins with the address of their table.
    const void* const table = *reinterpret_cast<const void* const*>(&context);
    void* const function = functionBeside(table, onDeliveryEndName);
    if (function == nullptr) {
        return false;
    }
    reinterpret_cast<OnDeliveryEnd>(function)(callback);
    return true;
}

} // namespace UICoverage
} // namespace Vorsk
