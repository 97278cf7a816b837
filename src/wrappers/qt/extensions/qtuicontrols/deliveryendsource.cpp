#include "deliveryendsource.h"

#include <vorsk/deliveryend.h>
#include <vorsk/wrappercontext.h>

#include <dlfcn.h>

namespace Vorsk {
namespace UIControls {

bool onDeliveryEnd(const WrapperContext* context, void (*callback)(QObject*, QEvent*)) {
    // The interface has no operation for it, so the library that the context comes from is asked
    // for a function.
    const void* const table = *reinterpret_cast<const void* const*>(context);
    Dl_info place{};
    if (dladdr(table, &place) == 0 || place.dli_fname == nullptr) {
        return false;
    }
    void* const library = dlopen(place.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    if (library == nullptr) {
        return false;
    }
    const auto ask = reinterpret_cast<DeliveryEndFunction>(dlsym(library, deliveryEndSymbol));
    if (ask != nullptr) {
        ask(callback);
    }
    dlclose(library); // it stays: whoever called us is in it
    return ask != nullptr;
}

} // namespace UIControls
} // namespace Vorsk
