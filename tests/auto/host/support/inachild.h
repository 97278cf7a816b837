// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <csignal>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

/**
 * Runs it in a child process, which a signal may end; what the child exited with, or minus the
 * signal.
 */
inline int inAChild(const std::function<int()>& body) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(body());
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}
