#pragma once

#include "report/coveragetree.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace Uicov::Report {

/** In which order windows are listed. */
namespace WindowOrder {

/** What can be asked for: "name", "elements", "missed", "cover". */
QStringList choices();

/**
 * The tree's windows in which anything counts: by name; by elements or missed ones, most first; by
 * cover, least first. Windows that are alike in that stand by name. Applications stay together.
 * @param order one of choices(), with "-" in front for the other way round
 */
QList<int> sorted(const CoverageTree& tree, const QString& order);

} // namespace WindowOrder

} // namespace Uicov::Report
