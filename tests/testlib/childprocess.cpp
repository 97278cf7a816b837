// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/childprocess.h"

#include <sys/wait.h>
#include <unistd.h>

namespace TestLib {

bool holdsInChildProcess(const std::function<bool()>& check) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(check() ? 0 : 1);
    }
    int status = 0;
    return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

} // namespace TestLib
