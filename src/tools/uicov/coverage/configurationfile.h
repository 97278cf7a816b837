#pragma once

#include "base/message.h"
#include "coverage/configuration.h"

#include <QString>

#include <optional>

namespace Uicov::Coverage {

/** Reads uicov.toml. */
namespace ConfigurationFile {

/** What it is called where nobody names another. */
QString defaultName();

/**
 * Reads the file.
 * @param configuration filled; means nothing when there is a problem
 * @return what is wrong, with line and column; nothing in the file is passed over
 */
std::optional<Base::Problem> read(const QString& path, Configuration& configuration);

} // namespace ConfigurationFile

} // namespace Uicov::Coverage
