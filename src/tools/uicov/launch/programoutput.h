// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

#include <string>
#include <vector>

namespace Uicov::Launch {

/** What a short-lived program printed. A value. */
struct ProgramOutput {
    /** It started, closed its output in time and ended with 0. */
    bool isSuccess = false;
    QByteArray text;
};

/** Where the standard error of a program goes. */
enum class ErrorStream { Merged, Dropped };

/**
 * Runs a program with an empty standard input to its end, and kills it when it takes too long.
 * Not by QProcess: where the kernel cannot signal a child's end by a descriptor it leaves a handler
 * for SIGCHLD in this process, which then waits for the application by itself (ChildProcess).
 *
 * @param command     program, looked up in PATH when it has no slash, and its arguments
 * @param environment NAME=VALUE each
 * @param timeout     milliseconds
 */
ProgramOutput outputOf(std::vector<std::string> command, std::vector<std::string> environment,
                       ErrorStream errors, int timeout);

} // namespace Uicov::Launch
