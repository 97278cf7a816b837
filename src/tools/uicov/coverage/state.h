#pragma once

#include <QString>

namespace Uicov::Coverage {

/** How far an element was exercised. */
enum class State { Used, Shown, Missed };

/** "used", "shown" or "missed", as every form of output says it. */
QString wordFor(State state);

} // namespace Uicov::Coverage
