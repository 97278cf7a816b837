#include "vorskhook/brokenpipeguard.h"

#include <cerrno>
#include <ctime>

namespace VorskHost {

BrokenPipeGuard::BrokenPipeGuard() {
    sigemptyset(&m_signal);
    sigaddset(&m_signal, SIGPIPE);
    sigset_t pending;
    sigpending(&pending);
    m_wasPending = sigismember(&pending, SIGPIPE) == 1;
    pthread_sigmask(SIG_BLOCK, &m_signal, &m_previous);
}

BrokenPipeGuard::~BrokenPipeGuard() {
    if (!m_wasPending) {
        const timespec noWait{};
        while (sigtimedwait(&m_signal, nullptr, &noWait) < 0 && errno == EINTR) {
        }
    }
    pthread_sigmask(SIG_SETMASK, &m_previous, nullptr);
}

} // namespace VorskHost
