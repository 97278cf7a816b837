// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coverageresult.h"
#include "coverage/gatekeeper.h"
#include "report/html/pagemodel.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace Uicov::Report::Html {

/**
 * What a page says of the data as a whole: title, runs, rules, gates, and all that has to be known
 * to read the numbers. Used once, when everything was read.
 */
class PageSummary {
public:
    /** Both outlive this. */
    PageSummary(const Coverage::CoverageResult& coverage, const RunHistory& history);

    /** Empty for the names of the applications. */
    void setTitle(const QString& title) { m_title = title; }
    void setGates(const QVector<Coverage::GateResult>& gates) { m_gates = gates; }
    /** Digits behind the point of percentages. */
    void setPrecision(int digits) { m_precision = digits; }
    /** Files that could not be read. */
    void setSkippedFiles(int files) { m_skippedFiles = files; }

    /** @param model what PageModelBuilder fills in stays as it is */
    void fill(PageModel& model) const;

private:
    QString title() const;
    QVector<PageModel::Rule> rules() const;
    QStringList warnings() const;
    QString partialWarning() const;
    QStringList notes() const;
    QStringList ruleNotes() const;

    const Coverage::CoverageResult& m_coverage;
    const RunHistory& m_history;
    QString m_title;
    QVector<Coverage::GateResult> m_gates;
    int m_precision = 0;
    int m_skippedFiles = 0;
};

} // namespace Uicov::Report::Html
