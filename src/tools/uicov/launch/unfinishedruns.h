// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

// What runs left whose command was killed, or could not keep what was recorded.
namespace Uicov::Launch {

/** Folders with recordings of runs with that data file that do not go any more, by name. Those
 * without a recording are removed on the way: nobody needs them. */
QStringList unfinishedRuns(const QString& dataFile);

/** The command that takes such a folder's recordings into the data file, and what to do then. */
QString adviceForUnfinished(const QString& dataFile, const QString& folder);

} // namespace Uicov::Launch
