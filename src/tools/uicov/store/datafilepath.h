#pragma once

#include <QString>

#include <string>

namespace Uicov::Store {

/** Where the data file is. */
namespace DataFilePath {

/**
 * The path that an option or UICOV_FILE gave, with %p replaced by the process id, %h by the host's
 * name and %% by %; the default, .uicov in the working folder, when it is empty.
 */
QString of(const std::string& option);

/** The path that UICOV_FILE gives, else the default. */
QString current();

/** What is to be typed to name it: nothing for the default, else as a shell takes it. */
QString asArgument(const QString& path);

/** As it can be pasted into a shell. */
QString shellQuoted(const QString& text);

} // namespace DataFilePath

} // namespace Uicov::Store
