// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include <cerrno>
#include <cstdarg>

#include <dlfcn.h>
#include <sys/syscall.h>

/*
 * Linked into tests that run under user-mode emulation. Qt asks the kernel by a wait whether
 * processes have descriptors. The emulator hands that to the kernel, which has them, but cannot
 * make such processes itself. So the question is answered with no, and Qt forks as on older
 * kernels.
 */

extern "C" __attribute__((visibility("default"))) long syscall(long number, ...) {
    constexpr long processDescriptor = 3; // P_PIDFD, which older headers do not know
    constexpr int most = 6;
    long arguments[most];
    va_list list;
    va_start(list, number);
    for (long& argument : arguments) {
        argument = va_arg(list, long);
    }
    va_end(list);
    if (number == SYS_waitid && arguments[0] == processDescriptor) {
        errno = ENOSYS;
        return -1;
    }
    using Function = long (*)(long, ...);
    static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "syscall"));
    return real(number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4],
                arguments[5]);
}
