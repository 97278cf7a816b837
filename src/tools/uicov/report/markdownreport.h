// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coverageresult.h"
#include "coverage/gatekeeper.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace Uicov::Report {

/** The report as a table for pull requests and wikis. Texts of applications stay data. */
class MarkdownReport {
public:
    explicit MarkdownReport(const Coverage::CoverageResult& coverage);

    void setListsMissed(bool lists) { m_listsMissed = lists; }
    void setListsContexts(bool lists) { m_listsContexts = lists; }
    void setPrecision(int digits) { m_precision = digits; }
    void setOrder(const QString& order) { m_order = order; }
    void setSkipsCovered(bool skips) { m_skipsCovered = skips; }
    void setNotes(const QStringList& notes) { m_notes = notes; }
    void setGates(const QVector<Coverage::GateResult>& gates) { m_gates = gates; }

    QString toString() const;

private:
    QString row(const QString& name, const Coverage::CoverageTree::Totals& totals) const;
    QString line(Coverage::NodeId node, const QString& rest) const;
    QString missedLine(Coverage::NodeId node) const;
    static QString listed(const char* title, const QStringList& names);
    QStringList lines(Coverage::WindowId window) const;

    const Coverage::CoverageResult& m_coverage;
    bool m_listsMissed = false;
    bool m_listsContexts = false;
    int m_precision = 0;
    QString m_order;
    bool m_skipsCovered = false;
    QStringList m_notes;
    QVector<Coverage::GateResult> m_gates;
};

} // namespace Uicov::Report
