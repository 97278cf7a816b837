// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordingformat/processname.h"

#include <QRegularExpression>

namespace RecordingFormat {

namespace {

QString suffix() {
    return QStringLiteral(".uirec");
}

QString stemOf(const QString& path) {
    return path.endsWith(suffix()) ? path.chopped(suffix().size()) : path;
}

} // namespace

QString pathForProcess(const QString& path, qint64 process, int ordinal) {
    const QString number = ordinal > 1 ? QStringLiteral("-%1").arg(ordinal) : QString();
    return stemOf(path) + QLatin1Char('-') + QString::number(process) + number + suffix();
}

bool isNameForProcess(const QString& fileName, const QString& path) {
    static const QRegularExpression ending(QStringLiteral("^-\\d+(-\\d+)?\\.uirec$"));
    const QString stem = stemOf(path.section(QLatin1Char('/'), -1));
    return fileName.startsWith(stem) && ending.match(fileName.mid(stem.size())).hasMatch();
}

} // namespace RecordingFormat
