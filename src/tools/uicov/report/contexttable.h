#pragma once

#include <QString>

namespace Uicov::Report {

class CoverageTree;

/** What each context touched, and what it adds that no other does. */
namespace ContextTable {

/** A table for people, contexts by name. "shown" alone is not counted as touching. */
QString toString(const CoverageTree& tree);

} // namespace ContextTable

} // namespace Uicov::Report
