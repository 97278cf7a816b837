#pragma once

#include <QString>

namespace Uicov::Coverage {
class CoverageTree;
}

namespace Uicov::Report {

/**
 * What each context used, and what it adds that no other does: what would not be used, or not have
 * happened, without it.
 */
namespace ContextTable {

/** A table for people, contexts by name. */
QString toString(const Coverage::CoverageTree& tree);
/** The same for pull requests and wikis. */
QString toMarkdown(const Coverage::CoverageTree& tree);

} // namespace ContextTable

} // namespace Uicov::Report
