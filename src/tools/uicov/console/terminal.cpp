#include "console/terminal.h"

#include "console/displaytext.h"

#include <QByteArray>

#include <cstdio>

#include <sys/ioctl.h>
#include <unistd.h>

namespace Uicov::Console {

namespace {

void writeLine(const QString& line) {
    const QByteArray bytes = line.toUtf8() + '\n';
    // Where standard error cannot be written there is nowhere to say so.
    static_cast<void>(
        std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr));
    static_cast<void>(std::fflush(stderr));
}

} // namespace

void Terminal::report(Severity severity, const Problem& problem) {
    const bool isError = severity == Severity::Error;
    QString word = isError ? QStringLiteral("error:") : QStringLiteral("warning:");
    if (mayUseColour(STDERR_FILENO)) {
        const QString colour =
            isError ? QStringLiteral("\x1b[1;31m") : QStringLiteral("\x1b[1;33m");
        word = colour + word + QStringLiteral("\x1b[0m");
    }
    writeLine(QStringLiteral("uicov: ") + word + QLatin1Char(' ') +
              DisplayText::escaped(problem.text) + QStringLiteral(" [") +
              messageName(problem.message) + QLatin1Char(']'));
}

void Terminal::note(const QString& text) {
    writeLine(QStringLiteral("uicov: ") + DisplayText::escaped(text));
}

bool Terminal::write(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0;
}

int Terminal::outputColumns() {
    winsize size{};
    if (isatty(STDOUT_FILENO) == 0 || ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) {
        return 0;
    }
    return size.ws_col;
}

bool Terminal::mayUseColour(int descriptor) {
    return isatty(descriptor) != 0 && qgetenv("NO_COLOR").isEmpty();
}

} // namespace Uicov::Console
