// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/shelltext.h"

#include <QRegularExpression>

namespace Uicov::Base {

QString shellQuoted(const QString& text) {
    static const QRegularExpression harmless(QStringLiteral("^[A-Za-z0-9_./,:=@%+-]+$"));
    if (harmless.match(text).hasMatch()) {
        return text;
    }
    QString quoted = text;
    return QLatin1Char('\'') + quoted.replace(QLatin1Char('\''), QLatin1String("'\\''")) +
           QLatin1Char('\'');
}

} // namespace Uicov::Base
