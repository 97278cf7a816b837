// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskqtwrapper/libraryplace.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace VorskHost {

namespace {

mode_t modeOf(const QString& path) {
    struct stat status {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode : 0;
}

} // namespace

QString LibraryPlace::sharedPart(const QString& library) {
    const QString file = QFileInfo(library).canonicalFilePath();
    if (file.isEmpty()) {
        return {}; // whoever loads it says so
    }
    const QString folder = QFileInfo(file).path();
    for (const QString& path : {file, folder}) {
        if ((modeOf(path) & S_IWOTH) != 0) {
            return path;
        }
    }
    for (QString path = folder; path != QLatin1String("/");) {
        path = QFileInfo(path).path();
        const mode_t mode = modeOf(path);
        if ((mode & S_IWOTH) != 0 && (mode & S_ISVTX) == 0) {
            return path;
        }
    }
    return {};
}

} // namespace VorskHost
