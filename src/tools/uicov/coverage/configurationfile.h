// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"
#include "coverage/configuration.h"

#include <QString>

#include <optional>

// Reads uicov.toml.
namespace Uicov::Coverage {

/** What it is called where nobody names another. */
QString defaultConfigurationFile();

/**
 * Reads the file.
 * @param configuration filled; means nothing when there is a problem
 * @return what is wrong, with line and column; nothing in the file is passed over
 */
std::optional<Base::Problem> readConfiguration(const QString& path, Configuration& configuration);

} // namespace Uicov::Coverage
