// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/mnemonics.h"

#include <QStringList>

namespace Vorsk {
namespace UICoverage {

QString stripMnemonics(const QString& text) {
    const QLatin1Char mark('&');
    if (!text.isEmpty() && !text.contains(mark)) {
        return text; // as most are; an empty one becomes a null one
    }
    static const QString separator =
        QStringLiteral("%1%2").arg(QLatin1Char('&')).arg(QLatin1Char('&'));
    QStringList parts = text.split(separator);
    for (QString& part : parts) {
        part.remove(mark);
    }
    return parts.join(mark);
}

} // namespace UICoverage
} // namespace Vorsk
