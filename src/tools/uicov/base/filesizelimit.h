// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

// What happens when a file grows beyond the limit of the process (ulimit -f).
namespace Uicov::Base {

/** From here on a write beyond the limit fails, as on a full disk, and does not end the process:
 * only so can it be told. To be called once, before anything is written. */
void outliveFileSizeLimit();

/** As it was before; for a child between fork and exec, whose program is to find what the user's
 * shell gave it. Safe there. */
void restoreFileSizeLimit();

} // namespace Uicov::Base
