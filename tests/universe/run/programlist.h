// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/** The programs of programs.txt. */
namespace ProgramList {

/**
 * Adds a row with the command ("command", QStringList) to the test's data for each program of the
 * set; for all programs when its name is empty. Returns how many.
 */
int addRows(const QByteArray& set);

} // namespace ProgramList
