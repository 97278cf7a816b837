// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// Makes texts of applications fit to be printed: they are data, and must neither break a line nor
// reach a terminal as a command.
namespace Uicov::Base {

/**
 * Everything that is no visible character or plain space written as an escape: \n, \t, \r, \\,
 * \xHH, \uHHHH. What turns the writing direction around is escaped as well.
 */
QString escaped(const QString& text);

/** At most this many columns; what is longer loses its middle, shown by an ellipsis. */
QString elided(const QString& text, int columns);

/** Columns of a terminal that the text takes: two for East Asian wide characters, none for
 * combining ones. */
int displayWidth(const QString& text);

/** Padded with spaces on the right, or on the left, to at least that many columns. */
QString padded(const QString& text, int columns);
QString paddedLeft(const QString& text, int columns);

} // namespace Uicov::Base
