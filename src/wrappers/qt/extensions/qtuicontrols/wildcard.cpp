// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/wildcard.h"

namespace Vorsk {
namespace UIControls {

QRegularExpression fromWildcard(const QString& pattern) {
    QString expression = QRegularExpression::escape(pattern);
    expression.replace(QLatin1String("\\*"), QLatin1String(".*"));
    expression.replace(QLatin1String("\\?"), QLatin1String("."));
    return QRegularExpression(QLatin1String("\\A(?:") + expression + QLatin1String(")\\z"),
                              QRegularExpression::DotMatchesEverythingOption);
}

} // namespace UIControls
} // namespace Vorsk
