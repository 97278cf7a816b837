// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskhook/busguard.h"

#include <atomic>
#include <csignal>

#include <sys/mman.h>

namespace VorskHost {

namespace {

// What a signal handler may look at.
std::atomic<char*> watchedStart{nullptr};
std::atomic<std::size_t> watchedLength{0};
std::atomic<bool> isHit{false};
static_assert(std::atomic<char*>::is_always_lock_free, "a signal handler uses it");

struct sigaction formerAction {};
bool isInstalled = false;

/** As if there had been no handler of ours. */
void passOn(int number, siginfo_t* info, void* context) {
    if ((formerAction.sa_flags & SA_SIGINFO) != 0) {
        formerAction.sa_sigaction(number, info, context);
    } else if (formerAction.sa_handler == SIG_IGN && info->si_code <= 0) {
        return; // sent by a program, which may be ignored; a fault may not
    } else if (formerAction.sa_handler == SIG_DFL || formerAction.sa_handler == SIG_IGN) {
        static_cast<void>(::signal(number, SIG_DFL));
        static_cast<void>(::raise(number)); // arrives when the handler has returned
    } else {
        formerAction.sa_handler(number);
    }
}

void handle(int number, siginfo_t* info, void* context) {
    char* const start = watchedStart;
    const auto* const address = static_cast<const char*>(info->si_addr);
    // Once it belongs to no file it cannot fail; an emulator that names a place beside the one that
    // did would have this go on for ever.
    if (info->si_code > 0 && !isHit && address >= start && address < start + watchedLength) {
        void* const memory = ::mmap(start, watchedLength, PROT_READ | PROT_WRITE,
                                    MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0);
        if (memory != MAP_FAILED) {
            isHit = true;
            return;
        }
    }
    passOn(number, info, context);
}

bool isOurs(const struct sigaction& action) {
    return (action.sa_flags & SA_SIGINFO) != 0 && action.sa_sigaction == handle;
}

} // namespace

void BusGuard::watch(void* start, std::size_t length) {
    watchedLength = 0;
    isHit = false;
    watchedStart = static_cast<char*>(start);
    watchedLength = length;
    if (isInstalled) {
        return;
    }
    struct sigaction action {};
    action.sa_sigaction = handle;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_RESTART;
    sigemptyset(&action.sa_mask);
    isInstalled = ::sigaction(SIGBUS, &action, &formerAction) == 0;
}

void BusGuard::stopWatching() {
    watchedLength = 0;
    struct sigaction current {};
    if (isInstalled && ::sigaction(SIGBUS, nullptr, &current) == 0 && isOurs(current)) {
        ::sigaction(SIGBUS, &formerAction, nullptr);
        isInstalled = false;
    }
}

bool BusGuard::wasHit() {
    return isHit;
}

} // namespace VorskHost
