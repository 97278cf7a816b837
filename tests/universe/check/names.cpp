// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "names.h"

#include <QRegularExpression>

#include <algorithm>

namespace Names {

QString plain(const QString& text) {
    static const QRegularExpression tags(QStringLiteral("<[^>]*>"));
    static const QRegularExpression asianMnemonic(QStringLiteral("\\(&[A-Z]\\)"));
    QString result = text.section(QLatin1Char('\t'), 0, 0);
    result.remove(tags).remove(asianMnemonic).remove(QLatin1Char('&'));
    return result.simplified();
}

void add(QStringList& names, const QString& text) {
    const QString name = plain(text);
    if (!name.isEmpty() && !names.contains(name)) {
        names.append(name);
    }
}

int common(const QStringList& a, const QStringList& b) {
    return static_cast<int>(
        std::count_if(a.cbegin(), a.cend(), [&b](const QString& one) { return b.contains(one); }));
}

} // namespace Names
