// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Uicov::Coverage {
class CoverageTree;
}

namespace Uicov::Report {

/**
 * How well the keys of a program's elements will last: for each window how many are named by the
 * program's authors, how many by their captions alone, how many have no name, and how many hang on
 * an ordinal since several alike stand side by side; and below the table, those.
 */
QString healthTable(const Coverage::CoverageTree& tree);

} // namespace Uicov::Report
