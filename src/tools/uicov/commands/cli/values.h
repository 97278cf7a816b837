// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <CLI/CLI.hpp>

// What options accept; what is refused is told in words that follow the option's name.
namespace Uicov::Commands::Cli {

CLI::Validator wholeNumber(int lowest, int highest);
/** @param highest none where it is lower than the lowest */
CLI::Validator number(double lowest, double highest = -1);

} // namespace Uicov::Commands::Cli
