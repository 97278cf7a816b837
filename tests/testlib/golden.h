// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

namespace TestLib {

/**
 * Compares lines with the golden file at the path. When they differ, the actual lines are kept as a
 * file of the same name in the folder.
 * @return empty when all is equal; otherwise the difference, with "-" before lines that are missing
 *         and "+" before lines that should not be there, and where the actual lines are
 */
QString compareWithGolden(const QString& goldenPath, const QStringList& actual,
                          const QString& actualFolder);

/** The lines of both, in order, with " " before common ones, "-" and "+" before the others. */
QStringList diff(const QStringList& expected, const QStringList& actual);

} // namespace TestLib
