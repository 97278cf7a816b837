#pragma once

#include <QString>

namespace Uicov::Report {

class CoverageTree;

/**
 * What each context used, and what it adds that no other does: what would not be used, or not have
 * happened, without it.
 */
namespace ContextTable {

/** A table for people, contexts by name. */
QString toString(const CoverageTree& tree);
/** The same for pull requests and wikis. */
QString toMarkdown(const CoverageTree& tree);

} // namespace ContextTable

} // namespace Uicov::Report
