// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/junitcommand.h"

#include "report/junitreport.h"

namespace Uicov::Commands {

namespace {

constexpr char examples[] =
    R"(A case for each window and for each gate, which fails where the gate is not met; not one for
each element.

Examples:
  uicov junit -o gui-coverage.xml --fail-under-window "Settings*=80"
  uicov junit --require-window "About*" -o gui-coverage.xml)";

} // namespace

JUnitCommand::Verb JUnitCommand::verb() const {
    return {"junit", "Write the report as JUnit XML, for CI servers", examples};
}

QByteArray JUnitCommand::make(const Coverage::CoverageResult& coverage,
                              const QVector<Coverage::GateResult>& gates) const {
    Report::JUnitReport report(coverage, gates);
    report.setPrecision(precision());
    return report.toBytes();
}

} // namespace Uicov::Commands
