// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "doctor/installationchecks.h"

#include "launch/elffile.h"
#include "launch/installation.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>
#include <QSqlDatabase>
#include <QStringList>

#include <cstring>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Uicov::Doctor {

using Launch::ElfFile;
using Launch::Installation;
using Result = Finding::Result;

namespace {

QString reinstall() {
    return QStringLiteral("install uicov anew, or set UICOV_LIBDIR to where its libraries are");
}

/**
 * Loads the library in a copy of this process, which it may do to as it likes.
 * @return why it cannot be loaded or has no such function; null when all is well
 */
QString loadingProblem(const QString& library, const char* function) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        return QStringLiteral("no process can be started to load it");
    }
    const QByteArray file = QFile::encodeName(library);
    const pid_t child = fork();
    if (child == 0) {
        void* const handle = dlopen(file.constData(), RTLD_NOW | RTLD_LOCAL);
        const char* error = handle == nullptr ? dlerror() : nullptr;
        if (error == nullptr && dlsym(handle, function) == nullptr) {
            error = dlerror();
        }
        if (error != nullptr) {
            const ssize_t written = write(ends[1], error, std::strlen(error));
            Q_UNUSED(written); // what does not arrive is told by the status
        }
        _exit(error == nullptr ? 0 : 1);
    }
    close(ends[1]);
    char buffer[1024];
    const ssize_t count = child > 0 ? read(ends[0], buffer, sizeof buffer) : 0;
    close(ends[0]);
    int status = -1;
    if (child > 0) {
        waitpid(child, &status, 0);
    }
    if (status == 0) {
        return {};
    }
    return count > 0 ? QString::fromLocal8Bit(buffer, static_cast<int>(count))
                     : QStringLiteral("loading it ended the process that tried");
}

/** Plugins carry only the first two numbers: the third makes no difference between them. */
QString versionText(int number) {
    constexpr int byteMask = 0xff;
    constexpr int bitsPerByte = 8;
    return QStringLiteral("%1.%2")
        .arg(number >> (2 * bitsPerByte))
        .arg((number >> bitsPerByte) & byteMask);
}

} // namespace

Finding checkExtension(const Installation& installation) {
    const QString check = QStringLiteral("extension");
    if (const auto problem = installation.problem()) {
        const int advice = problem->text.lastIndexOf(QLatin1String("; "));
        return {Result::Problem, check, problem->text.left(advice), reinstall()};
    }
    const ElfFile library(installation.extension());
    const ElfFile self(QStringLiteral("/proc/self/exe"));
    const QString built =
        installation.extension() + QStringLiteral(", built for ") + library.architecture();
    if (!library.hasSameArchitectureAs(self)) {
        return {Result::Warning, check,
                built + QStringLiteral(", but uicov itself for ") + self.architecture() +
                    QStringLiteral(", so it was not tried out"),
                QStringLiteral("see that this is the machine that the application is built for")};
    }
    const QString problem = loadingProblem(installation.extension(), "init_extension");
    if (!problem.isNull()) {
        return {Result::Problem, check,
                installation.extension() + QStringLiteral(" cannot be loaded: ") + problem,
                QStringLiteral("install what is missing (it needs Qt 5's Core, Gui, Widgets, Qml "
                               "and Quick), or ") +
                    reinstall()};
    }
    return {Result::Ok, check, built + QStringLiteral(", can be loaded"), QString()};
}

QString qtVersionOf(const Installation& installation) {
    const QPluginLoader loader(installation.starter());
    const int number = loader.metaData().value(QLatin1String("version")).toInt();
    return number == 0 ? QString() : versionText(number);
}

Finding checkStarter(const Installation& installation) {
    const QString check = QStringLiteral("starter-plugin");
    const QString file = installation.starter();
    if (!QFileInfo::exists(file)) {
        return {Result::Problem, check, file + QStringLiteral(" is missing"), reinstall()};
    }
    const QPluginLoader loader(file);
    const QJsonObject data = loader.metaData();
    const QJsonArray keys =
        data.value(QLatin1String("MetaData")).toObject().value(QLatin1String("Keys")).toArray();
    if (data.value(QLatin1String("IID")).toString() !=
            QLatin1String("org.qt-project.Qt.QGenericPluginFactoryInterface") ||
        !keys.contains(installation.pluginKey())) {
        return {Result::Problem, check,
                file + QStringLiteral(" is no generic Qt plugin of the key ") +
                    installation.pluginKey(),
                reinstall()};
    }
    return {Result::Ok, check, file + QStringLiteral(", built for Qt ") + qtVersionOf(installation),
            QString()};
}

Finding checkPluginPath(const Installation& installation) {
    const QString check = QStringLiteral("plugin-path");
    const QString folder = installation.pluginFolder();
    if (folder.contains(QLatin1Char(':'))) {
        return {Result::Problem, check,
                folder + QStringLiteral(" has a colon in its path, so QT_PLUGIN_PATH cannot hold "
                                        "it"),
                QStringLiteral("move uicov to a folder without one")};
    }
    const QStringList entries =
        QFile::decodeName(qgetenv("QT_PLUGIN_PATH")).split(QLatin1Char(':'));
    const QString own = QFileInfo(installation.starter()).canonicalFilePath();
    for (const QString& entry : entries) {
        const QFileInfo other(entry + QStringLiteral("/generic/libvorskstarter.so"));
        if (!entry.isEmpty() && other.exists() && other.canonicalFilePath() != own) {
            return {Result::Warning, check,
                    QStringLiteral("QT_PLUGIN_PATH leads to another uicov's plugin first: ") +
                        other.filePath(),
                    QStringLiteral("take ") + entry + QStringLiteral(" out of QT_PLUGIN_PATH")};
        }
    }
    return {Result::Ok, check, QStringLiteral("QT_PLUGIN_PATH can lead to ") + folder, QString()};
}

Finding checkDataFiles() {
    const QString check = QStringLiteral("data-files");
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE"))) {
        return {Result::Problem, check, QStringLiteral("Qt's driver for SQLite is missing"),
                QStringLiteral("install it (Debian: libqt5sql5-sqlite)")};
    }
    return {Result::Ok, check, QStringLiteral("Qt's driver for SQLite is there"), QString()};
}

Findings checkInstallation(const Installation& installation) {
    return {checkExtension(installation), checkStarter(installation), checkPluginPath(installation),
            checkDataFiles()};
}

} // namespace Uicov::Doctor
