// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/childprocess.h"

#include "base/deferredend.h"
#include "base/filesizelimit.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Uicov::Launch {

namespace {

constexpr int cannotExecute = 127;
constexpr int handedOn[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGUSR1, SIGUSR2};

sigset_t watchedSignals() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGCHLD);
    for (const int number : handedOn) {
        sigaddset(&set, number);
    }
    return set;
}

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string& text : texts) {
        // exec takes pointers to non-const for historical reasons and changes nothing.
        pointers.push_back(
            const_cast<char*>(text.c_str())); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    }
    pointers.push_back(nullptr);
    return pointers;
}

/** What was sent to end the application must not end this process, now that the other has ended. */
void dropPending(const sigset_t& signals) {
    const timespec noTime{};
    while (sigtimedwait(&signals, nullptr, &noTime) > 0) {
    }
}

/** Whether the signal was meant for this process alone. One that came from the terminal, or from
 * the application to its group, the application has already. */
bool isForUs(const siginfo_t& info, pid_t child) {
    return info.si_code <= 0 && info.si_pid != child;
}

} // namespace

bool ChildProcess::run(const std::string& path, const std::vector<std::string>& arguments,
                       const std::vector<std::string>& environment) {
    // Everything that needs memory is done before the fork.
    const std::vector<char*> argumentPointers = pointersTo(arguments);
    const std::vector<char*> environmentPointers = pointersTo(environment);
    // The pipe closes when the program starts, or brings what kept it from starting.
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        m_error = errno;
        return false;
    }
    const sigset_t watched = watchedSignals();
    sigset_t before;
    sigprocmask(SIG_BLOCK, &watched, &before);
    // What an earlier call left blocked is not the program's.
    static const sigset_t ofFirst = before;
    const sigset_t ofProgram = m_mask.value_or(ofFirst);
    struct sigaction childAction {};
    struct sigaction previousChildAction {};
    childAction.sa_handler = SIG_DFL; // an inherited SIG_IGN would take the child's status away
    sigaction(SIGCHLD, &childAction, &previousChildAction);

    const pid_t child = fork();
    if (child == 0) {
        sigaction(SIGCHLD, &previousChildAction, nullptr);
        sigprocmask(SIG_SETMASK, &ofProgram, nullptr);
        Base::restoreFileSizeLimit();
        execvpe(path.c_str(), argumentPointers.data(), environmentPointers.data());
        const int error = errno;
        while (write(ends[1], &error, sizeof error) < 0 && errno == EINTR) {
        }
        _exit(cannotExecute);
    }
    m_error = child < 0 ? errno : 0;
    close(ends[1]);
    if (child > 0) {
        m_pid = child;
        int error = 0;
        ssize_t count = 0;
        do {
            count = read(ends[0], &error, sizeof error);
        } while (count < 0 && errno == EINTR);
        m_error = count == sizeof error ? error : 0;
        waitForEnd();
    }
    close(ends[0]);
    dropPending(watched);
    sigaction(SIGCHLD, &previousChildAction, nullptr);
    // timeout(1) and shells signal the whole group as well: the second signal comes while what was
    // recorded is kept.
    const sigset_t enders = Base::DeferredEnd::signalSet();
    sigset_t after;
    sigorset(&after, &before, &enders);
    sigprocmask(SIG_SETMASK, &after, nullptr);
    return m_error == 0;
}

void ChildProcess::waitForEnd() {
    const sigset_t watched = watchedSignals();
    while (waitpid(m_pid, &m_status, WNOHANG) == 0) {
        siginfo_t info{};
        const int number = sigwaitinfo(&watched, &info);
        if (number > 0 && number != SIGCHLD && isForUs(info, m_pid)) {
            kill(m_pid, number);
        }
    }
}

int ChildProcess::signal() const {
    return WIFSIGNALED(m_status) ? WTERMSIG(m_status) : 0;
}

int ChildProcess::exitCode() const {
    constexpr int signalBase = 128;
    return WIFSIGNALED(m_status) ? signalBase + WTERMSIG(m_status) : WEXITSTATUS(m_status);
}

} // namespace Uicov::Launch
