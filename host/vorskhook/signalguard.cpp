// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskhook/signalguard.h"

#include <cerrno>
#include <ctime>

namespace VorskHost {

SignalGuard::SignalGuard(int signal) {
    sigemptyset(&m_signal);
    sigaddset(&m_signal, signal);
    sigset_t pending;
    sigpending(&pending);
    m_wasPending = sigismember(&pending, signal) == 1;
    pthread_sigmask(SIG_BLOCK, &m_signal, &m_previous);
}

SignalGuard::~SignalGuard() {
    const int error = errno;
    if (!m_wasPending) {
        const timespec noWait{};
        while (sigtimedwait(&m_signal, nullptr, &noWait) < 0 && errno == EINTR) {
        }
    }
    pthread_sigmask(SIG_SETMASK, &m_previous, nullptr);
    errno = error;
}

} // namespace VorskHost
