#pragma once

#include <vorsk/global.h>

#include <QtGlobal>

#include <csignal>

namespace VorskHost {

/**
 * While it lives, a write of this thread to a pipe that nobody reads any more fails instead of
 * ending the application by SIGPIPE. Lives on the stack, on any thread.
 */
class VORSK_HOST_EXPORT BrokenPipeGuard {
public:
    BrokenPipeGuard();
    ~BrokenPipeGuard();
    Q_DISABLE_COPY(BrokenPipeGuard)

private:
    bool m_wasPending = false;
    sigset_t m_signal{};
    sigset_t m_previous{};
};

} // namespace VorskHost
