// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Uicov::Coverage {
class CoverageTree;
}

// What each context used, and what it adds that no other does: what would not be used, or not have
// happened, without it.
namespace Uicov::Report {

/** A table for people, contexts by name. */
QString contextTable(const Coverage::CoverageTree& tree);
/** The same for pull requests and wikis. */
QString contextTableMarkdown(const Coverage::CoverageTree& tree);

} // namespace Uicov::Report
