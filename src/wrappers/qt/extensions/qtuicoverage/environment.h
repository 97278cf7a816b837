// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

namespace Vorsk {
namespace UICoverage {

// The process environment holds bytes in the locale's encoding; names and values here are UTF-8.

/** Empty when the variable is unset or empty, or when its name or value cannot be converted. */
std::string getEnvironmentVariable(std::string name);

/** Replaces an earlier value. Does nothing when the name is empty or cannot be converted. */
void setEnvironmentVariable(std::string name, std::string value);
void unsetEnvironmentVariable(std::string name);

} // namespace UICoverage
} // namespace Vorsk
