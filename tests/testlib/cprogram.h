#pragma once

#include <QString>
#include <QStringList>

namespace TestLib {

/**
 * Compiles a C source into a small program or library that a test needs and that cannot be made
 * with this build's own settings: statically linked, without Qt, with a name of somebody else's.
 * @return false when the compiler fails; it has then said why on standard error
 */
bool buildC(const QString& source, const QString& output, const QStringList& flags = {});

/** Writes a file that can be executed; false when that fails. */
bool writeScript(const QString& path, const QString& text);

} // namespace TestLib
