#include "coverage/state.h"

namespace Uicov::Coverage {

QString wordFor(State state) {
    switch (state) {
    case State::Used:
        return QStringLiteral("used");
    case State::Shown:
        return QStringLiteral("shown");
    case State::Missed:
        break;
    }
    return QStringLiteral("missed");
}

} // namespace Uicov::Coverage
