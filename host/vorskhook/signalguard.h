// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/global.h>

#include <QtGlobal>

#include <csignal>

namespace VorskHost {

/**
 * While it lives, a signal that a write of this thread would raise, and by which the application
 * would end, does not arrive: the write fails, and errno says why. SIGPIPE where nobody reads a
 * pipe any more, SIGXFSZ beyond the file size limit. Lives on the stack, on any thread.
 */
class VORSK_HOST_EXPORT SignalGuard {
public:
    explicit SignalGuard(int signal);
    /** Leaves errno as it is. */
    ~SignalGuard();
    Q_DISABLE_COPY(SignalGuard)

private:
    bool m_wasPending = false;
    sigset_t m_signal{};
    sigset_t m_previous{};
};

} // namespace VorskHost
