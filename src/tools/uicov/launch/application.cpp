// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/application.h"

#include "launch/elffile.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <cstring>

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace Uicov::Launch {

using Base::Message;
using Base::Problem;

namespace {

/** As shells do; the command itself when it holds a slash. Not QStandardPaths: that one skips what
 * is found but cannot be run, and the difference matters to the user. */
QString lookUp(const QString& command) {
    if (command.contains(QLatin1Char('/'))) {
        return QFileInfo::exists(command) ? command : QString();
    }
    QString found;
    const QStringList folders = QFile::decodeName(qgetenv("PATH")).split(QLatin1Char(':'));
    for (const QString& folder : folders) {
        QString path =
            (folder.isEmpty() ? QStringLiteral(".") : folder) + QLatin1Char('/') + command;
        const QFileInfo info(path);
        if (info.isFile() && info.isExecutable()) {
            return path;
        }
        if (info.isFile() && found.isEmpty()) {
            found = path;
        }
    }
    return found;
}

} // namespace

Application::Application(const QString& command)
    : m_command(command)
    , m_path(command.isEmpty() ? QString() : lookUp(command))
    , m_qt(QStringList()) {}

QString Application::name() const {
    return QFileInfo(m_command).fileName();
}

std::optional<Problem> Application::check(const QString& extension) {
    if (auto problem = checkFile()) {
        return problem;
    }
    m_exitCode = 1;
    return checkLinking(extension);
}

std::optional<Problem> Application::checkFile() {
    constexpr int notFound = 127;
    constexpr int notExecutable = 126;
    m_exitCode = notFound;
    if (m_path.isEmpty()) {
        const bool isPath = m_command.contains(QLatin1Char('/'));
        return Problem{Message::ApplicationMissing,
                       m_command +
                           (isPath ? QStringLiteral(": there is no such program; check the path")
                                   : QStringLiteral(": no such program in PATH; check the name "
                                                    "or write ./") +
                                         m_command)};
    }
    m_exitCode = notExecutable;
    const QFileInfo info(m_path);
    if (info.isDir()) {
        return Problem{Message::ApplicationNotExecutable,
                       m_path + QStringLiteral(": is a folder; name the program in it")};
    }
    if (access(QFile::encodeName(m_path).constData(), X_OK) != 0) {
        return Problem{Message::ApplicationNotExecutable,
                       m_path + QStringLiteral(": is not executable; set its mode with chmod +x")};
    }
    return std::nullopt;
}

std::optional<Problem> Application::checkLinking(const QString& extension) {
    const ElfFile program(m_path);
    if (!program.isElf()) {
        m_isScript = true;
        return std::nullopt;
    }
    if (program.isAppImage()) {
        m_isAppImage = true; // of how it is linked nothing follows for what is in it
        return std::nullopt;
    }
    const ElfFile library(extension);
    if (!program.hasSameArchitectureAs(library)) {
        return Problem{Message::WrongArchitecture,
                       m_path + QStringLiteral(": is built for ") + program.architecture() +
                           QStringLiteral(", but the extension for ") + library.architecture() +
                           QStringLiteral("; use a uicov built for the application's machine")};
    }
    m_interpreter = program.interpreter();
    if (m_interpreter.isEmpty()) {
        return Problem{Message::StaticExecutable,
                       m_path +
                           QStringLiteral(": is statically linked, so no library can be loaded "
                                          "into it; link it dynamically")};
    }
    m_qt = QtLibraries::ofProgram(m_interpreter, m_path);
    if (m_qt.hasCore() && m_qt.major() != QT_VERSION_MAJOR) {
        return Problem{Message::WrongQtVersion,
                       m_path + QStringLiteral(": uses Qt ") + m_qt.version() +
                           QStringLiteral(", but the extension is built for Qt ") +
                           QString::fromLatin1(qVersion()) +
                           QStringLiteral("; only Qt 5 applications can be recorded")};
    }
    const QByteArray build = m_qt.hasCore() ? QByteArray() : program.qtBuildText();
    if (build.contains(" static ")) {
        return Problem{Message::StaticQt,
                       m_path + QStringLiteral(": has Qt linked in statically (") +
                           QString::fromLatin1(build) +
                           QStringLiteral("), so it loads no plugins; link Qt dynamically")};
    }
    return std::nullopt;
}

Application::Privilege Application::privilege() const {
    const QByteArray file = QFile::encodeName(m_path);
    struct stat status {};
    if (stat(file.constData(), &status) != 0) {
        return Privilege::None;
    }
    const bool setsUser = (status.st_mode & S_ISUID) != 0;
    const bool setsGroup = (status.st_mode & S_ISGID) != 0;
    const bool hasCapabilities = getxattr(file.constData(), "security.capability", nullptr, 0) > 0;
    // A user that has every right gains none from capabilities.
    if ((setsUser && status.st_uid != getuid()) || (setsGroup && status.st_gid != getgid()) ||
        (hasCapabilities && getuid() != 0)) {
        return Privilege::Other;
    }
    return setsUser || setsGroup || hasCapabilities ? Privilege::SameUser : Privilege::None;
}

QString Application::causeOfSilence(int signal) const {
    if (m_isScript) {
        return QStringLiteral(
            "it is a script, and no Qt 5 program with windows that it started was "
            "reached; name the program itself");
    }
    if (m_isAppImage) {
        return QStringLiteral("it is an AppImage, and the program in it was not reached; unpack it "
                              "with --appimage-extract and name the program");
    }
    if (!m_qt.hasCore()) {
        return QStringLiteral("it does not use Qt 5; name the program that shows the windows");
    }
    if (!m_qt.hasGui()) {
        return QStringLiteral("it does not use Qt 5's GUI, only libQt5Core; name the program that "
                              "shows the windows");
    }
    if (privilege() == Privilege::Other) {
        return QStringLiteral("it runs with more rights than yours (setuid, setgid or "
                              "capabilities), which shuts plugins out; run a copy without them");
    }
    if (signal != 0) {
        return QStringLiteral(
                   "it was ended by signal %1 (%2) before its QApplication was there; see "
                   "that it starts without uicov")
            .arg(signal)
            .arg(QString::fromLocal8Bit(strsignal(signal)));
    }
    return QStringLiteral(
               "it uses Qt %1, but ended before its QApplication was there, or it, a "
               "launcher or a sandbox took QT_PLUGIN_PATH or QT_QPA_GENERIC_PLUGINS away; "
               "see that it shows a window without uicov")
        .arg(m_qt.version());
}

} // namespace Uicov::Launch
