// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/jsoncommand.h"

#include "report/jsonreport.h"

namespace Uicov::Commands {

namespace {

constexpr char examples[] =
    R"(Everything that is known: runs, windows, elements with their events by context, rules, gates.
docs/json-format.md describes the format, which has a version of its own.

Examples:
  uicov json -o coverage.json
  uicov json | jq '.windows[].elements[] | select(.state == "missed") | .key')";

} // namespace

JsonCommand::Verb JsonCommand::verb() const {
    return {"json", "Write the whole report for programs", examples};
}

QByteArray JsonCommand::make(const Coverage::CoverageResult& coverage,
                             const QVector<Coverage::GateResult>& gates) const {
    return Report::JsonReport(coverage, gates).toBytes();
}

} // namespace Uicov::Commands
