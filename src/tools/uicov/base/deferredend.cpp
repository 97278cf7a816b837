// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/deferredend.h"

namespace Uicov::Base {

namespace {

constexpr int enders[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

/** One that is ignored, as by nohup or a job in the background, waits all the same. */
bool isIgnored(int number) {
    struct sigaction action {};
    return sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

} // namespace

sigset_t DeferredEnd::signalSet() {
    sigset_t set;
    sigemptyset(&set);
    for (const int number : enders) {
        sigaddset(&set, number);
    }
    return set;
}

DeferredEnd::DeferredEnd() {
    const sigset_t set = signalSet();
    sigprocmask(SIG_BLOCK, &set, &m_before);
}

DeferredEnd::~DeferredEnd() {
    if (!m_isKept) {
        sigprocmask(SIG_SETMASK, &m_before, nullptr);
    }
}

bool DeferredEnd::isRequested() {
    sigset_t pending;
    sigemptyset(&pending);
    sigpending(&pending);
    for (const int number : enders) {
        if (sigismember(&pending, number) == 1 && !isIgnored(number)) {
            return true;
        }
    }
    return false;
}

} // namespace Uicov::Base
