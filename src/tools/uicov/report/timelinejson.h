// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonArray>

namespace Uicov::Coverage {
class CoverageResult;
}

namespace Uicov::Report {

/** An object for each entry of the timeline that a report speaks of; times are milliseconds since
 * the recording began. */
QJsonArray timelineJson(const Coverage::CoverageResult& coverage);

} // namespace Uicov::Report
