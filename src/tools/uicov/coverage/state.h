// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Uicov::Coverage {

/** How far an element was exercised. */
enum class State {
    Used,
    /** Seen only. */
    Shown,
    Missed,
    /** A control that was never enabled: nobody could have used it, so it is outside every ratio.
     */
    Unavailable
};

/** "used", "shown", "missed" or "unavailable", as every form of output says it. */
QString wordFor(State state);
/** The same of a control, which is "seen" where an element of the classic extension is "shown". */
QString wordForControl(State state);

} // namespace Uicov::Coverage
