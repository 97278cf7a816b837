// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

namespace TestLib {

/**
 * Runs the check in a copy of this process, for what can be seen only once in a process. No thread
 * but the calling one exists in the copy, and nothing of it outlives the check.
 * @return what the check returned; false also when it did not come to its end
 */
bool holdsInChildProcess(const std::function<bool()>& check);

} // namespace TestLib
