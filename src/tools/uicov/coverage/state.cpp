// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/state.h"

namespace Uicov::Coverage {

QString wordFor(State state) {
    switch (state) {
    case State::Used:
        return QStringLiteral("used");
    case State::Shown:
        return QStringLiteral("shown");
    case State::Unavailable:
        return QStringLiteral("unavailable");
    case State::Missed:
        break;
    }
    return QStringLiteral("missed");
}

QString wordForControl(State state) {
    return state == State::Shown ? QStringLiteral("seen") : wordFor(state);
}

} // namespace Uicov::Coverage
