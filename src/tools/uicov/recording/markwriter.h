#pragma once

#include <QString>
#include <QStringList>

namespace Uicov::Recording {

/** Begins contexts in recordings that others are writing. */
namespace MarkWriter {

/**
 * Appends a whole Mark frame as each of the application's messages is appended: so it stands
 * between two of them and divides all that was sent before from all that is sent later.
 * @return false when the file is no recording of a process that still runs, or cannot be written
 */
bool append(const QString& recording, const QString& name);

} // namespace MarkWriter

} // namespace Uicov::Recording
