// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Asks a program's own loader what it would load, without running anything of the program.
namespace Uicov::Launch {

/**
 * @param interpreter the program's loader, as ElfFile::interpreter() gives it
 * @param preloaded   a library that is to be loaded before all others; empty for none
 * @return what the loader says, line by line: "libX.so.1 => /path/libX.so.1 (0x...)" for what it
 *         found, and its complaints; nothing when it cannot be started
 */
QStringList listLibraries(const QByteArray& interpreter, const QString& program,
                          const QString& preloaded = QString());

/** Those of the lines that say that something is missing, without what is the same in each. */
QStringList loaderComplaints(const QStringList& lines);

} // namespace Uicov::Launch
