// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/shelltext.h"

#include <QString>

#include <string>

// Where the data file is.
namespace Uicov::Store {

/**
 * The path that an option or UICOV_FILE gave, with %p replaced by the process id, %h by the host's
 * name and %% by %; the default, .uicov in the working folder, when it is empty.
 */
QString dataFilePath(const std::string& option);

/** The path that UICOV_FILE gives, else the default. */
QString currentDataFile();

/** What is to be typed to name it: nothing for the default, else as a shell takes it. */
QString dataFileArgument(const QString& path);

/** The file that is meant: where a link stands, what it leads to, be that there or not. */
QString resolved(const QString& path);

using Base::shellQuoted;

} // namespace Uicov::Store
