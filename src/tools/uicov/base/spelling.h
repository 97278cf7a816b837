#pragma once

#include <QString>
#include <QStringList>

namespace Uicov::Base {

/** For messages about names that do not exist. */
namespace Spelling {

/** Insertions, removals and replacements that make one text of the other, ignoring case. */
int distance(const QString& written, const QString& known);

/** The choice that is spelt most alike, the first of several; null when there are none. */
QString nearest(const QString& written, const QStringList& choices);

} // namespace Spelling

} // namespace Uicov::Base
