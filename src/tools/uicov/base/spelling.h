// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

// For messages about names that do not exist.
namespace Uicov::Base {

/** Insertions, removals and replacements that make one text of the other, ignoring case. */
int editDistance(const QString& written, const QString& known);

/** The choice that is spelt most alike, the first of several; null when there are none. */
QString nearestSpelling(const QString& written, const QStringList& choices);

} // namespace Uicov::Base
