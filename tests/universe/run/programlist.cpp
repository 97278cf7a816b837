// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "programlist.h"

#include <QFile>
#include <QTest>

namespace ProgramList {

int addRows(const QByteArray& set) {
    QTest::addColumn<QStringList>("command");
    QFile list(QStringLiteral(PROGRAM_LIST));
    if (!list.open(QIODevice::ReadOnly)) {
        return 0;
    }
    int programs = 0;
    while (!list.atEnd()) {
        const QString line = QString::fromUtf8(list.readLine()).simplified();
        QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (words.isEmpty() || words.first().startsWith(QLatin1Char('#'))) {
            continue;
        }
        if (words.takeFirst() == QLatin1String(set) || set.isEmpty()) {
            const QString name = words.first();
            if (!name.startsWith(QLatin1Char('/'))) {
                words.first().prepend(QStringLiteral(UICOV_EXAMPLES));
            }
            QTest::newRow(qPrintable(name)) << words;
            ++programs;
        }
    }
    return programs;
}

} // namespace ProgramList
