// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Uicov::Store {

class Sql;

/**
 * What in the open file's schema uicov never makes, in a few words for people; empty when all of it
 * is ours, of this or an earlier version. A file can bring triggers, generated columns, or a view
 * in the place of a table, which would run when it is read or written. So this comes before
 * anything else is read.
 */
QString foreignObjectIn(Sql& sql);

} // namespace Uicov::Store
