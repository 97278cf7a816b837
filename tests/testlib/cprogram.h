// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

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

/**
 * The same for an empty program that needs these of Qt's libraries and no others.
 * @param libraries names of files, as programs name them
 */
bool buildWithQt(const QString& output, const QStringList& libraries);

/** Writes a file that can be executed; false when that fails. */
bool writeScript(const QString& path, const QString& text);

} // namespace TestLib
