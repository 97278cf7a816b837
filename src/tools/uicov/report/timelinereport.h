// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Uicov::Coverage {
class CoverageResult;
}

namespace Uicov::Report {

/**
 * What was used and seen in the order of time, run by run, with its context. What rules leave out
 * is left out here, too.
 */
class TimelineReport {
public:
    /** @param coverage outlives this */
    explicit TimelineReport(const Coverage::CoverageResult& coverage);

    QString toText() const;
    /** A table for each run. */
    QString toMarkdown() const;

private:
    enum class Form { Text, Markdown };

    QString print(Form form) const;
    QString note() const;

    const Coverage::CoverageResult& m_coverage;
};

} // namespace Uicov::Report
