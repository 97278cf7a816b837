// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskhook/hostlogging.h"

#include "vorskhook/signalguard.h"

#include <QString>

namespace VorskHost {

// Neither category is ever destroyed: both are used while the process exits, after the statics of
// this library are gone.

const QLoggingCategory& hostLog() {
    static const auto* category = new QLoggingCategory("vorsk.host");
    return *category;
}

void reportProblem(const QString& line) {
    QString visible;
    for (const QChar character : line) {
        if (character.category() == QChar::Other_Control) {
            visible += QStringLiteral("\\x%1").arg(character.unicode(), 2, 16, QLatin1Char('0'));
        } else {
            visible += character;
        }
    }
    // An application that says nothing by itself would die of our line.
    const SignalGuard guard(SIGPIPE);
    qCWarning(hostLog).noquote() << visible;
}

const QLoggingCategory& extensionLog() {
    static const auto* category = new QLoggingCategory("vorsk.extension", QtCriticalMsg);
    return *category;
}

} // namespace VorskHost
