// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coverageresult.h"
#include "coverage/gatekeeper.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QVector>

namespace Uicov::Report {

/**
 * The report for programs, with everything in it that is known. docs/json-format.md describes the
 * format, which has a version of its own.
 */
class JsonReport {
public:
    static constexpr int formatVersion = 1;

    explicit JsonReport(const Coverage::CoverageResult& coverage,
                        const QVector<Coverage::GateResult>& gates = {});

    QJsonObject toObject() const;
    /** Indented, ending with a line feed; equal reports give equal bytes. */
    QByteArray toBytes() const;

private:
    QJsonArray runs() const;
    QJsonObject notWatched() const;
    QJsonArray windows() const;
    QJsonObject window(Coverage::WindowId window) const;
    QJsonObject view(Coverage::NodeId node) const;
    QJsonObject element(Coverage::NodeId node) const;
    QJsonArray events(const Coverage::Events& events) const;
    QJsonArray onlyContexts() const;
    QJsonArray ignoreRules() const;
    QJsonArray labelRules() const;
    QJsonObject criteria() const;
    QJsonArray gates() const;

    const Coverage::CoverageResult& m_coverage;
    QVector<Coverage::GateResult> m_gates;
};

} // namespace Uicov::Report
