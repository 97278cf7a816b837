// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "universeplugin.h"

#include "player.h"

namespace {

constexpr int usualSteps = 300;

int number(const char* variable, int otherwise) {
    bool isNumber = false;
    const int value = qEnvironmentVariableIntValue(variable, &isNumber);
    return isNumber ? value : otherwise;
}

} // namespace

QObject* UniversePlugin::create(const QString& /*key*/, const QString& /*settings*/) {
    const QString journal = QString::fromLocal8Bit(qgetenv("UICOV_UNIVERSE_JOURNAL"));
    if (journal.isEmpty()) {
        return new QObject;
    }
    qunsetenv("UICOV_UNIVERSE_JOURNAL"); // what the application starts is not played with
    return new Player(journal, static_cast<quint32>(number("UICOV_UNIVERSE_SEED", 1)),
                      number("UICOV_UNIVERSE_STEPS", usualSteps));
}
