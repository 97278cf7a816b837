// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "exceptions.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>

bool Exceptions::read(const QString& path, QString& problem) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        problem = path + QStringLiteral(": ") + file.errorString();
        return false;
    }
    int number = 0;
    while (!file.atEnd()) {
        ++number;
        if (!takeLine(QString::fromUtf8(file.readLine()).trimmed())) {
            problem = QStringLiteral("%1:%2: not FIGURE PROGRAM CLASS[/TEXT] REASON")
                          .arg(path)
                          .arg(number);
            return false;
        }
    }
    return true;
}

bool Exceptions::takeLine(const QString& line) {
    if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) {
        return true;
    }
    static const QRegularExpression form(QStringLiteral(
        "^(universe|recall|precision)\\s+(\\S+)\\s+([^\\s/]+)(?:/(\\S+))?\\s+(\\S.*)$"));
    const QRegularExpressionMatch match = form.match(line);
    if (match.hasMatch()) {
        m_known.append(
            {match.captured(1), match.captured(2), match.captured(3), match.captured(4)});
    }
    return match.hasMatch();
}

bool Exceptions::isKnown(const Comparison::Miss& miss, const QString& figure,
                         const QString& program) const {
    return std::any_of(m_known.cbegin(), m_known.cend(), [&](const Known& known) {
        return known.figure == figure &&
               (known.program == QLatin1String("*") || known.program == program) &&
               known.className == miss.className && miss.text.contains(known.text);
    });
}

Comparison::Figure Exceptions::without(const Comparison::Figure& figure,
                                       const QString& program) const {
    Comparison::Figure rest{figure.name, figure.total, {}};
    for (const Comparison::Miss& miss : figure.misses) {
        if (isKnown(miss, figure.name, program)) {
            --rest.total;
        } else {
            rest.misses.append(miss);
        }
    }
    return rest;
}
