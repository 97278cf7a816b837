#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace Uicov::Launch {

/** Asks a program's own loader what it would load, without running anything of the program. */
namespace Loader {

/**
 * @param interpreter the program's loader, as ElfFile::interpreter() gives it
 * @param preloaded   a library that is to be loaded before all others; empty for none
 * @return what the loader says, line by line: "libX.so.1 => /path/libX.so.1 (0x...)" for what it
 *         found, and its complaints; nothing when it cannot be started
 */
QStringList list(const QByteArray& interpreter, const QString& program,
                 const QString& preloaded = QString());

/** Those of the lines that say that something is missing, without what is the same in each. */
QStringList complaints(const QStringList& lines);

} // namespace Loader

} // namespace Uicov::Launch
