// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/programoutput.h"

#include <QElapsedTimer>

#include <csignal>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Uicov::Launch {

namespace {

constexpr int maximumOutput = 4 * 1024 * 1024;

/** Reads until the other side closes; false when it has not after that many milliseconds. */
bool readAll(int descriptor, int timeout, QByteArray& output) {
    QElapsedTimer timer;
    timer.start();
    pollfd entry{descriptor, POLLIN, 0};
    while (output.size() < maximumOutput) {
        const int left = timeout - static_cast<int>(timer.elapsed());
        if (left <= 0 || poll(&entry, 1, left) <= 0) {
            return false;
        }
        char buffer[4096];
        const ssize_t count = read(descriptor, buffer, sizeof buffer);
        if (count <= 0) {
            return count == 0;
        }
        output.append(buffer, static_cast<int>(count));
    }
    return false;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

ProgramOutput outputOf(std::vector<std::string> command, std::vector<std::string> environment,
                       ErrorStream errors, int timeout) {
    ProgramOutput result;
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return result;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    if (errors == ErrorStream::Merged) {
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
    } else {
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    pid_t pid = 0;
    const int error = posix_spawnp(&pid, command.front().c_str(), &actions, nullptr,
                                   pointersTo(command).data(), pointersTo(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    if (error == 0) {
        const bool isClosed = readAll(ends[0], timeout, result.text);
        if (!isClosed) {
            kill(pid, SIGKILL); // of no effect on one that has ended, and it is not waited for yet
        }
        int status = 0;
        waitpid(pid, &status, 0);
        result.isSuccess = isClosed && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
    close(ends[0]);
    return result;
}

} // namespace Uicov::Launch
