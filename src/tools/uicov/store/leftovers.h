// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// What stands beside a data file after a process that wrote to it was killed.
namespace Uicov::Store {

/**
 * Brings the file into the state in which it can be read and copied alone: takes away the lock and
 * the half-written file of a process that is gone, and lets SQLite take back a change that another
 * program, or an earlier uicov, began and did not end. Nothing happens while somebody writes, or
 * where nothing may be changed.
 */
void tidyUp(const QString& path);

/** Whether SQLite has anything beside that file. */
bool hasJournals(const QString& path);

/** Removes what SQLite left beside a file that is not there, or is about to be replaced: it would
 * be applied to whatever stands there next. */
void removeJournals(const QString& path);

} // namespace Uicov::Store
