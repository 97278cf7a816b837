// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coveragetree.h"

#include <QJsonObject>

namespace Uicov::Report {

/** Sums as every JSON of this program has them; docs/json-format.md describes each. */
QJsonObject totalsJson(const Coverage::CoverageTree::Totals& totals);

} // namespace Uicov::Report
