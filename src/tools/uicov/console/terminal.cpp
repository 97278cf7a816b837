// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "console/terminal.h"

#include "base/displaytext.h"

#include <QByteArray>

#include <cstdio>

#include <sys/ioctl.h>
#include <unistd.h>

namespace Uicov::Console {

using Base::messageName;
using Base::Problem;

namespace {

/** Back to the first column, and everything right of it gone. */
constexpr char lineEraser[] = "\r\x1b[K";

Terminal::Colour chosenColour = Terminal::Colour::Automatic;

int columnsOf(int descriptor) {
    winsize size{};
    if (isatty(descriptor) == 0 || ioctl(descriptor, TIOCGWINSZ, &size) != 0) {
        return 0;
    }
    return size.ws_col;
}

} // namespace

Terminal::~Terminal() = default;

void Terminal::writeError(const QByteArray& bytes) {
    // Where standard error cannot be written there is nowhere to say so.
    static_cast<void>(
        std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr));
    static_cast<void>(std::fflush(stderr));
}

void Terminal::writeLine(const QString& line) {
    clearStatus();
    writeError(line.toUtf8() + '\n');
}

void Terminal::showStatus(const QString& text) {
    if (!isErrorTerminal()) {
        return;
    }
    const QString line = QStringLiteral("uicov: ") + Base::escaped(text);
    // The last column stays free: some terminals go to the next line when it is filled.
    const int columns = errorColumns() - 1;
    m_showsStatus = true;
    writeError(lineEraser + Base::elided(line, columns).toUtf8());
}

void Terminal::clearStatus() {
    if (m_showsStatus) {
        m_showsStatus = false;
        writeError(lineEraser);
    }
}

bool Terminal::isErrorTerminal() const {
    return isatty(STDERR_FILENO) != 0 && qgetenv("TERM") != "dumb";
}

int Terminal::errorColumns() const {
    return columnsOf(STDERR_FILENO);
}

void Terminal::report(Severity severity, const Problem& problem) {
    const bool isError = severity == Severity::Error;
    QString word = isError ? QStringLiteral("error:") : QStringLiteral("warning:");
    if (mayUseColour(STDERR_FILENO)) {
        const QString colour =
            isError ? QStringLiteral("\x1b[1;31m") : QStringLiteral("\x1b[1;33m");
        word = colour + word + QStringLiteral("\x1b[0m");
    }
    writeLine(QStringLiteral("uicov: ") + word + QLatin1Char(' ') + Base::escaped(problem.text) +
              QStringLiteral(" [") + messageName(problem.message) + QLatin1Char(']'));
}

void Terminal::note(const QString& text) {
    writeLine(QStringLiteral("uicov: ") + Base::escaped(text));
}

bool Terminal::write(const QString& text) {
    clearStatus(); // both streams may be one terminal
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0;
}

int Terminal::outputColumns() {
    return columnsOf(STDOUT_FILENO);
}

void Terminal::setColour(Colour colour) {
    chosenColour = colour;
}

bool Terminal::mayUseColour(int descriptor) {
    if (chosenColour != Colour::Automatic) {
        return chosenColour == Colour::Always;
    }
    return isatty(descriptor) != 0 && qgetenv("NO_COLOR").isEmpty() && qgetenv("TERM") != "dumb";
}

} // namespace Uicov::Console
