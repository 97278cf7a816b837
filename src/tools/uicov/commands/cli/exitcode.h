// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

namespace Uicov::Commands::Cli {

/** What the command ends with; "uicov run" ends with the application's own status. */
enum ExitCode : int {
    Done = 0,
    Failed = 1,       ///< wrong use, or input or output failed
    PolicyNotMet = 2, ///< a limit that was asked for is not kept
    PartialData = 3   ///< the data is partial or damaged, and --strict was given
};

} // namespace Uicov::Commands::Cli
