// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/unfinishedruns.h"

#include "base/shelltext.h"
#include "launch/runfolder.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

namespace Uicov::Launch {

namespace {

/** A run that is just starting has its folder before its lock, for a moment. */
constexpr qint64 longestStart = 60; // seconds

bool isOld(const QString& folder) {
    return QFileInfo(folder).lastModified().secsTo(QDateTime::currentDateTime()) > longestStart;
}

} // namespace

QStringList unfinishedRuns(const QString& dataFile) {
    QStringList found;
    const QStringList folders = RunFolder::foldersOf(dataFile, false);
    for (const QString& folder : folders) {
        if (RunFolder::hasRecordings(folder)) {
            found.append(folder);
        } else if (isOld(folder)) {
            QDir(folder).removeRecursively();
        }
    }
    return found;
}

QString adviceForUnfinished(const QString& dataFile, const QString& folder) {
    return QStringLiteral("uicov combine -a -o %1 %2, then remove the folder")
        .arg(Base::shellQuoted(dataFile), Base::shellQuoted(folder));
}

} // namespace Uicov::Launch
