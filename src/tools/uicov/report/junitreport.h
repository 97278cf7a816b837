// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coverageresult.h"
#include "coverage/gatekeeper.h"

#include <QByteArray>
#include <QVector>

namespace Uicov::Report {

/**
 * The report as JUnit XML, for the pages that CI servers make of test results: a case for each
 * window and one for each gate, not for each element. A case fails where a gate is not met.
 */
class JUnitReport {
public:
    JUnitReport(const Coverage::CoverageResult& coverage,
                const QVector<Coverage::GateResult>& gates);

    void setPrecision(int digits) { m_precision = digits; }

    QByteArray toBytes() const;

private:
    const Coverage::CoverageResult& m_coverage;
    QVector<Coverage::GateResult> m_gates;
    int m_precision = 0;
};

} // namespace Uicov::Report
