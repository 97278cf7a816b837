#include "launch/qtlibraries.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <csignal>

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

QByteArray outputOf(const QByteArray& program, const QByteArray& option,
                    const QByteArray& argument) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return {};
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    QByteArray texts[] = {program, option, argument};
    char* arguments[] = {texts[0].data(), texts[1].data(), texts[2].data(), nullptr};
    pid_t pid = 0;
    const int error = posix_spawn(&pid, program.constData(), &actions, nullptr, arguments, environ);
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

QtLibraries QtLibraries::ofProgram(const QByteArray& interpreter, const QString& program) {
    if (interpreter.isEmpty()) {
        return QtLibraries(QStringList());
    }
    const QByteArray output =
        outputOf(interpreter, QByteArrayLiteral("--list"), QFile::encodeName(program));
    return QtLibraries(QString::fromLocal8Bit(output).split(QLatin1Char('\n')));
}

QtLibraries::QtLibraries(const QStringList& loaderLines) {
    // Qt 4's libraries have no number in their names: libQtCore.so.4, libQt5Core.so.5.
    static const QRegularExpression qtLibrary(QStringLiteral(
        "^\\s*libQt\\d?(Core|Gui)[A-Za-z0-9_-]*\\.so\\.(\\d+)(?: => (\\S.*) \\(0x)?"));
    static const QRegularExpression exactVersion(QStringLiteral("\\.so\\.(\\d+(?:\\.\\d+)+)$"));
    for (const QString& line : loaderLines) {
        const auto match = qtLibrary.match(line);
        if (!match.hasMatch()) {
            continue;
        }
        const int lineMajor = match.captured(2).toInt();
        if (match.captured(1) == QLatin1String("Gui")) {
            m_hasGui = true;
            continue;
        }
        m_major = lineMajor;
        const auto exact = exactVersion.match(QFileInfo(match.captured(3)).canonicalFilePath());
        m_version = exact.hasMatch() ? exact.captured(1) : match.captured(2);
    }
}

} // namespace Uicov::Launch
