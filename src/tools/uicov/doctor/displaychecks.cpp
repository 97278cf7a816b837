// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "doctor/displaychecks.h"

#include "launch/qtlibraries.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>

#include <cstddef>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace Uicov::Doctor {

using Launch::QtLibraries;
using Result = Finding::Result;

namespace {

QString variable(const char* name) {
    return QFile::decodeName(qgetenv(name));
}

QString withoutDisplay() {
    return QStringLiteral("set QT_QPA_PLATFORM=offscreen, or start uicov with xvfb-run -a");
}

/** @param path of a socket in the file system; with a zero byte in front one that is in none */
bool canConnect(const QByteArray& path) {
    sockaddr_un address{};
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path) {
        return false;
    }
    address.sun_family = AF_UNIX;
    std::memcpy(static_cast<char*>(address.sun_path), path.constData(),
                static_cast<std::size_t>(path.size()));
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0) {
        return false;
    }
    const bool isAbstract = path.startsWith('\0');
    const auto length =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) +
                               static_cast<std::size_t>(path.size()) + (isAbstract ? 0 : 1));
    const bool isConnected =
        connect(descriptor, reinterpret_cast<const sockaddr*>(&address), length) == 0;
    close(descriptor);
    return isConnected;
}

Finding xDisplay(const QString& display) {
    const QString check = QStringLiteral("display");
    static const QRegularExpression local(QStringLiteral("^(?:unix)?:(\\d+)(?:\\.\\d+)?$"));
    const auto match = local.match(display);
    if (!match.hasMatch()) {
        return {Result::Ok, check,
                QStringLiteral("the X display ") + display +
                    QStringLiteral(" (not tried, it is another machine's)"),
                QString()};
    }
    const QByteArray path = QByteArrayLiteral("/tmp/.X11-unix/X") + match.captured(1).toLatin1();
    if (!canConnect(path) && !canConnect('\0' + path)) {
        return {Result::Problem, check,
                QStringLiteral("DISPLAY is ") + display +
                    QStringLiteral(", but no X server answers there"),
                QStringLiteral("correct DISPLAY; or ") + withoutDisplay()};
    }
    return {Result::Ok, check,
            QStringLiteral("the X display ") + display + QStringLiteral(" answers"), QString()};
}

Finding waylandDisplay(const QString& display) {
    const QString check = QStringLiteral("display");
    const QString path = display.startsWith(QLatin1Char('/'))
                             ? display
                             : variable("XDG_RUNTIME_DIR") + QLatin1Char('/') + display;
    if (!canConnect(QFile::encodeName(path))) {
        return {Result::Problem, check,
                QStringLiteral("WAYLAND_DISPLAY is ") + display +
                    QStringLiteral(", but no compositor answers at ") + path,
                QStringLiteral("correct WAYLAND_DISPLAY and XDG_RUNTIME_DIR; or ") +
                    withoutDisplay()};
    }
    return {Result::Ok, check,
            QStringLiteral("the Wayland display ") + display + QStringLiteral(" answers"),
            QString()};
}

bool isWithoutScreen(const QString& platform) {
    return platform.startsWith(QLatin1String("offscreen")) ||
           platform.startsWith(QLatin1String("minimal"));
}

/** What a qt.conf beside the application says of where plugins are; empty when nothing. */
QString configuredPluginFolder(const QString& executable) {
    const QDir folder = QFileInfo(executable).canonicalPath();
    const QString file = folder.filePath(QStringLiteral("qt.conf"));
    if (!QFileInfo::exists(file)) {
        return {};
    }
    const QSettings settings(file, QSettings::IniFormat);
    const QString prefix =
        settings.value(QStringLiteral("Paths/Prefix"), QStringLiteral(".")).toString();
    const QString plugins =
        settings.value(QStringLiteral("Paths/Plugins"), QStringLiteral("plugins")).toString();
    return QDir::cleanPath(QDir(folder.filePath(prefix)).filePath(plugins));
}

} // namespace

QString displayPlatform() {
    const QString chosen = variable("QT_QPA_PLATFORM");
    if (!chosen.isEmpty()) {
        // "xcb:option;wayland": options behind a colon, others to fall back to behind a semicolon.
        return chosen.section(QLatin1Char(';'), 0, 0).section(QLatin1Char(':'), 0, 0);
    }
    if (!variable("DISPLAY").isEmpty()) {
        return QStringLiteral("xcb");
    }
    return variable("WAYLAND_DISPLAY").isEmpty() ? QString() : QStringLiteral("wayland");
}

Finding checkDisplay(const QString& devices) {
    const QString name = displayPlatform();
    if (name.isEmpty()) {
        const QString seen = QStringLiteral("none of QT_QPA_PLATFORM, DISPLAY and WAYLAND_DISPLAY "
                                            "is set");
        const bool hasScreen = QFileInfo::exists(devices + QStringLiteral("/fb0")) ||
                               QFileInfo::exists(devices + QStringLiteral("/dri/card0"));
        return hasScreen
                   ? Finding{Result::Warning, QStringLiteral("display"),
                             seen + QStringLiteral(", so only a Qt that is built to draw on the "
                                                   "screen itself (eglfs, linuxfb) can start"),
                             QStringLiteral("with any other Qt, ") + withoutDisplay()}
                   : Finding{Result::Problem, QStringLiteral("display"),
                             QStringLiteral("there is no display: ") + seen, withoutDisplay()};
    }
    if (name == QLatin1String("xcb")) {
        const QString display = variable("DISPLAY");
        return display.isEmpty()
                   ? Finding{Result::Problem, QStringLiteral("display"),
                             QStringLiteral("QT_QPA_PLATFORM is xcb, but DISPLAY is not set"),
                             withoutDisplay()}
                   : xDisplay(display);
    }
    if (name.startsWith(QLatin1String("wayland"))) {
        const QString display = variable("WAYLAND_DISPLAY");
        return waylandDisplay(display.isEmpty() ? QStringLiteral("wayland-0") : display);
    }
    return {Result::Ok, QStringLiteral("display"),
            QStringLiteral("the platform ") + name +
                (isWithoutScreen(name) ? QStringLiteral(" needs none")
                                       : QStringLiteral(" was chosen; not tried")),
            QString()};
}

QStringList platformPluginFolders(const QtLibraries& qt, const QString& executable) {
    QStringList folders;
    const auto add = [&folders](const QString& folder) {
        if (!folder.isEmpty() && !folders.contains(folder)) {
            folders.append(folder);
        }
    };
    for (const QString& entry : variable("QT_PLUGIN_PATH").split(QLatin1Char(':'))) {
        add(entry);
    }
    add(configuredPluginFolder(executable));
    if (!qt.folder().isEmpty()) {
        // As distributions lay Qt out, and as Qt's own installer does.
        for (const char* place : {"qt5/plugins", "../plugins", "plugins", "../lib/qt/plugins"}) {
            add(QDir::cleanPath(qt.folder() + QLatin1Char('/') + QLatin1String(place)));
        }
    }
    add(QFileInfo(executable).canonicalPath());
    return folders;
}

Finding checkPlatformPlugin(const QtLibraries& qt, const QString& executable) {
    const QString check = QStringLiteral("platform-plugin");
    const QString name =
        displayPlatform().isEmpty() ? QStringLiteral("offscreen") : displayPlatform();
    QStringList folders{variable("QT_QPA_PLATFORM_PLUGIN_PATH")};
    for (const QString& folder : platformPluginFolders(qt, executable)) {
        folders.append(folder + QStringLiteral("/platforms"));
    }
    const QStringList pattern{QStringLiteral("libq") + name + QStringLiteral("*.so")};
    for (const QString& folder : qAsConst(folders)) {
        const QStringList files =
            folder.isEmpty() ? QStringList() : QDir(folder).entryList(pattern, QDir::Files);
        if (!files.isEmpty()) {
            return {Result::Ok, check, folder + QLatin1Char('/') + files.first(), QString()};
        }
    }
    return {Result::Warning, check,
            QStringLiteral("no plugin for the platform ") + name +
                QStringLiteral(" was found where the application's Qt is"),
            QStringLiteral("install it, or choose another platform with QT_QPA_PLATFORM; all is "
                           "well if the application starts without uicov")};
}

Finding checkQuickBackend() {
    const QString check = QStringLiteral("quick-backend");
    const bool isSoftware = variable("QT_QUICK_BACKEND") == QLatin1String("software") ||
                            variable("QMLSCENE_DEVICE") == QLatin1String("softwarecontext");
    if (!isWithoutScreen(displayPlatform())) {
        return {Result::Ok, check,
                isSoftware ? QStringLiteral("Qt Quick draws without OpenGL")
                           : QStringLiteral("Qt Quick draws as it likes"),
                QString()};
    }
    if (!isSoftware) {
        return {Result::Warning, check,
                QStringLiteral("the platform ") + displayPlatform() +
                    QStringLiteral(" may have no OpenGL for Qt Quick"),
                QStringLiteral("set QT_QUICK_BACKEND=software")};
    }
    return {Result::Ok, check,
            QStringLiteral("Qt Quick draws without OpenGL; on this platform it has no pictures"),
            QString()};
}

} // namespace Uicov::Doctor
