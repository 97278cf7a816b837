// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/loader.h"

#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>

#include <csignal>
#include <string>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Uicov::Launch {

namespace {

constexpr int loaderTimeout = 20000; // milliseconds; a loader needs a few
constexpr int maximumLoaderOutput = 4 * 1024 * 1024;

/** Reads until the other side closes, or gives up. */
QByteArray readAll(int descriptor) {
    QByteArray output;
    QElapsedTimer timer;
    timer.start();
    pollfd entry{descriptor, POLLIN, 0};
    while (output.size() < maximumLoaderOutput) {
        const int left = loaderTimeout - static_cast<int>(timer.elapsed());
        if (left <= 0 || poll(&entry, 1, left) <= 0) {
            break;
        }
        char buffer[4096];
        const ssize_t count = read(descriptor, buffer, sizeof buffer);
        if (count <= 0) {
            break;
        }
        output.append(buffer, static_cast<int>(count));
    }
    return output;
}

/** The environment, with the libraries that others want to have loaded left out. */
std::vector<std::string> environmentWith(const QString& preloaded) {
    const std::string name = "LD_PRELOAD=";
    std::vector<std::string> variables;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        if (preloaded.isEmpty() || std::string(*entry).compare(0, name.size(), name) != 0) {
            variables.emplace_back(*entry);
        }
    }
    if (!preloaded.isEmpty()) {
        variables.push_back(name + QFile::encodeName(preloaded).toStdString());
    }
    return variables;
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

/**
 * Not by QProcess: where the kernel cannot signal a child's end by a descriptor it leaves a handler
 * for SIGCHLD in this process, which then waits for the application by itself (ChildProcess).
 */
QByteArray outputOf(std::vector<std::string> command, std::vector<std::string> environment) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return {};
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    pid_t pid = 0;
    const int error = posix_spawn(&pid, command.front().c_str(), &actions, nullptr,
                                  pointersTo(command).data(), pointersTo(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    QByteArray output;
    if (error == 0) {
        output = readAll(ends[0]);
        kill(pid, SIGKILL); // of no effect on one that has ended, and it is not waited for yet
        waitpid(pid, nullptr, 0);
    }
    close(ends[0]);
    return output;
}

} // namespace

QStringList listLibraries(const QByteArray& interpreter, const QString& program,
                          const QString& preloaded) {
    if (interpreter.isEmpty()) {
        return {};
    }
    const QByteArray output =
        outputOf({interpreter.toStdString(), "--list", QFile::encodeName(program).toStdString()},
                 environmentWith(preloaded));
    return QString::fromLocal8Bit(output).split(QLatin1Char('\n'));
}

QStringList loaderComplaints(const QStringList& lines) {
    static const QRegularExpression missing(
        QStringLiteral("^(?:.*: error while loading shared libraries: )?(\\S+)"
                       "(?: => not found|: cannot open shared object file: .*)$"));
    static const QRegularExpression other(
        QStringLiteral("^.*: (?:error while loading shared libraries: )?"
                       "(.* (?:not found \\(required by .*|cannot be preloaded .*))$"));
    static const QRegularExpression error(
        QStringLiteral("^.*: error while loading shared libraries: (.*)$"));
    QStringList result;
    const auto add = [&result](const QString& text) {
        if (!result.contains(text)) {
            result.append(text);
        }
    };
    for (const QString& line : lines) {
        const QString text = line.trimmed();
        if (const auto match = missing.match(text); match.hasMatch()) {
            add(match.captured(1) + QStringLiteral(" is not found"));
        } else if (const auto otherMatch = other.match(text); otherMatch.hasMatch()) {
            add(otherMatch.captured(1));
        } else if (const auto errorMatch = error.match(text); errorMatch.hasMatch()) {
            add(errorMatch.captured(1));
        }
    }
    return result;
}

} // namespace Uicov::Launch
