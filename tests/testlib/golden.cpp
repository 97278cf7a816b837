// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/golden.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QVector>

#include <algorithm>

namespace TestLib {

namespace {

/** Unchanged lines are shown only this close to a changed one. */
constexpr int contextLines = 3;

QStringList withoutDistantContext(const QStringList& lines) {
    QStringList kept;
    for (int i = 0; i < lines.size(); ++i) {
        const int first = std::max(0, i - contextLines);
        const int last = std::min(lines.size() - 1, i + contextLines);
        const bool isNear =
            std::any_of(lines.cbegin() + first, lines.cbegin() + last + 1,
                        [](const QString& line) { return !line.startsWith(QLatin1Char(' ')); });
        if (isNear) {
            kept.append(lines.at(i));
        } else if (kept.isEmpty() || kept.last() != QLatin1String(" ...")) {
            kept.append(QStringLiteral(" ..."));
        }
    }
    return kept;
}

QString keepActual(const QString& goldenPath, const QStringList& actual, const QString& folder) {
    QDir().mkpath(folder);
    QString path = QDir(folder).filePath(QFileInfo(goldenPath).fileName());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return QStringLiteral("nowhere: ") + file.errorString();
    }
    file.write((actual.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8());
    return path;
}

} // namespace

QStringList diff(const QStringList& expected, const QStringList& actual) {
    const int rows = expected.size();
    const int columns = actual.size();
    // The length of the longest common sequence of what is behind each pair of places.
    QVector<QVector<int>> common(rows + 1, QVector<int>(columns + 1, 0));
    for (int i = rows - 1; i >= 0; --i) {
        for (int j = columns - 1; j >= 0; --j) {
            common[i][j] = expected.at(i) == actual.at(j)
                               ? common.at(i + 1).at(j + 1) + 1
                               : std::max(common.at(i + 1).at(j), common.at(i).at(j + 1));
        }
    }
    QStringList lines;
    int i = 0;
    int j = 0;
    while (i < rows || j < columns) {
        if (i < rows && j < columns && expected.at(i) == actual.at(j)) {
            lines.append(QLatin1Char(' ') + expected.at(i));
            ++i;
            ++j;
        } else if (j == columns || (i < rows && common.at(i + 1).at(j) >= common.at(i).at(j + 1))) {
            lines.append(QLatin1Char('-') + expected.at(i++));
        } else {
            lines.append(QLatin1Char('+') + actual.at(j++));
        }
    }
    return lines;
}

QString compareWithGolden(const QString& goldenPath, const QStringList& actual,
                          const QString& actualFolder) {
    QFile file(goldenPath);
    if (!file.open(QIODevice::ReadOnly)) {
        return QStringLiteral("%1: %2\nThe actual lines are in %3")
            .arg(goldenPath, file.errorString(), keepActual(goldenPath, actual, actualFolder));
    }
    QString golden = QString::fromUtf8(file.readAll());
    golden.chop(golden.endsWith(QLatin1Char('\n')) ? 1 : 0);
    const QStringList expected = golden.split(QLatin1Char('\n'));
    if (expected == actual) {
        return {};
    }
    return QStringLiteral("%1 differs:\n%2\nThe actual lines are in %3")
        .arg(goldenPath, withoutDistantContext(diff(expected, actual)).join(QLatin1Char('\n')),
             keepActual(goldenPath, actual, actualFolder));
}

} // namespace TestLib
