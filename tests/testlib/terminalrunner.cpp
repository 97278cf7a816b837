// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/terminalrunner.h"

#include <QFile>

#include <csignal>
#include <vector>

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace TestLib {

TerminalRunner::~TerminalRunner() {
    if (m_pid > 0) {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }
    if (m_terminal >= 0) {
        close(m_terminal);
    }
}

bool TerminalRunner::start(const QString& program, const QStringList& arguments, int columns) {
    std::vector<QByteArray> texts{QFile::encodeName(program)};
    texts.reserve(static_cast<std::size_t>(arguments.size()) + 1);
    for (const QString& argument : arguments) {
        texts.push_back(QFile::encodeName(argument));
    }
    std::vector<char*> pointers;
    for (QByteArray& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    const winsize size{24, static_cast<unsigned short>(columns), 0, 0};
    m_pid = forkpty(&m_terminal, nullptr, nullptr, &size);
    if (m_pid == 0) {
        // A terminal's keys do nothing to programs that were started with these ignored.
        static_cast<void>(signal(SIGINT, SIG_DFL));
        static_cast<void>(signal(SIGQUIT, SIG_DFL));
        execv(pointers.front(), pointers.data());
        _exit(127);
    }
    return m_pid > 0;
}

bool TerminalRunner::readSome() {
    char buffer[4096];
    const ssize_t count = read(m_terminal, buffer, sizeof buffer);
    if (count > 0) {
        m_output.append(buffer, static_cast<int>(count));
    }
    return count > 0;
}

bool TerminalRunner::readUntil(const QByteArray& text) {
    while (!m_output.contains(text)) {
        if (!readSome()) {
            return false;
        }
    }
    return true;
}

void TerminalRunner::type(const QByteArray& keys) {
    const ssize_t count =
        write(m_terminal, keys.constData(), static_cast<std::size_t>(keys.size()));
    Q_UNUSED(count); // what is not typed shows in the output that then does not come
}

int TerminalRunner::finish() {
    while (readSome()) {
    }
    int status = 0;
    waitpid(m_pid, &status, 0);
    m_pid = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace TestLib
