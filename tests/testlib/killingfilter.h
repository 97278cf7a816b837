// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <initializer_list>
#include <vector>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>

namespace TestLib {

/** From now on the system ends this process, and what it becomes by exec(), for any of these system
 * calls. False where it cannot do that. */
inline bool killOn(std::initializer_list<unsigned> calls) {
    const auto load = static_cast<unsigned short>(BPF_LD | BPF_W | BPF_ABS);
    const auto equal = static_cast<unsigned short>(BPF_JMP | BPF_JEQ | BPF_K);
    const auto result = static_cast<unsigned short>(BPF_RET | BPF_K);
    std::vector<sock_filter> code{{load, 0, 0, 0}}; // the call's number comes first
    for (const unsigned call : calls) {
        code.push_back({equal, 0, 1, call});
        code.push_back({result, 0, 0, SECCOMP_RET_KILL_PROCESS});
    }
    code.push_back({result, 0, 0, SECCOMP_RET_ALLOW});
    const sock_fprog program{static_cast<unsigned short>(code.size()), code.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

} // namespace TestLib
