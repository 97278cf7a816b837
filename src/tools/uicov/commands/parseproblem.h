// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"

#include <QString>

#include <CLI/CLI.hpp>

namespace Uicov::Commands {

/**
 * What is wrong with a command line, in this command's words: which option of which verb, what it
 * takes, and what is spelt most alike.
 * @param app what refused the command line
 */
Base::Problem parseProblem(const CLI::ParseError& error, const CLI::App& app);

/** The same for a verb that there is not. */
Base::Problem unknownVerb(const QString& verb, const CLI::App& app);

} // namespace Uicov::Commands
