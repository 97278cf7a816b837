// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

// Begins contexts in recordings that others are writing.
namespace Uicov::Recording {

/**
 * Appends a whole Mark frame as each of the application's messages is appended: so it stands
 * between two of them and divides all that was sent before from all that is sent later.
 * @return false when the file is no recording of a process that still runs, or cannot be written
 */
bool appendMark(const QString& recording, const QString& name);

} // namespace Uicov::Recording
