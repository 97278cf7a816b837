// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/datafilepath.h"

#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

#include <cstdlib>

#include <unistd.h>

namespace Uicov::Store {

namespace {

QString defaultPath() {
    return QStringLiteral(".uicov");
}

} // namespace

QString dataFilePath(const std::string& option) {
    if (option.empty()) {
        return defaultPath();
    }
    const QString pattern = QFile::decodeName(option.c_str());
    QString path;
    for (int i = 0; i < pattern.size(); ++i) {
        const QString sequence = pattern.mid(i, 2);
        if (sequence == QLatin1String("%p")) {
            path += QString::number(::getpid());
        } else if (sequence == QLatin1String("%h")) {
            path += QSysInfo::machineHostName();
        } else if (sequence == QLatin1String("%%")) {
            path += QLatin1Char('%');
        } else {
            path += pattern.at(i);
            continue;
        }
        ++i;
    }
    return path;
}

QString currentDataFile() {
    const char* const variable = std::getenv("UICOV_FILE");
    return dataFilePath(variable == nullptr ? std::string() : std::string(variable));
}

QString dataFileArgument(const QString& path) {
    return path == defaultPath() ? QString() : shellQuoted(path);
}

QString resolved(const QString& path) {
    const QFileInfo info(path);
    if (!info.isSymLink()) {
        return path;
    }
    const QString target = info.canonicalFilePath();
    return target.isEmpty() ? info.symLinkTarget() : target;
}

} // namespace Uicov::Store
