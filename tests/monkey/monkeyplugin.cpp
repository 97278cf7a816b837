// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "monkeyplugin.h"

#include "monkey.h"

namespace {

constexpr int usualEvents = 300;

int number(const char* variable, int otherwise) {
    bool isNumber = false;
    const int value = qEnvironmentVariableIntValue(variable, &isNumber);
    return isNumber ? value : otherwise;
}

} // namespace

QObject* MonkeyPlugin::create(const QString& /*key*/, const QString& /*settings*/) {
    return new Monkey(static_cast<quint32>(number("UICOV_MONKEY_SEED", 1)),
                      number("UICOV_MONKEY_EVENTS", usualEvents));
}
