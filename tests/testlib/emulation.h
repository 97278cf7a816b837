#pragma once

#include <QtGlobal>

namespace TestLib {

/** Whether an emulator runs the tests, as they are built for another processor. */
inline bool isEmulated() {
    return qEnvironmentVariableIsSet("QEMU_LD_PREFIX");
}

} // namespace TestLib
