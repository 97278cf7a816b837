// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coveragetree.h"

#include <QString>
#include <QStringList>

namespace Uicov::Report {

class TextTable;

/**
 * The report that people read in a terminal: one line per window, what was missed below it if
 * asked for, the sum, what the words mean, and what has to be known about the numbers. Equal data
 * gives equal text.
 */
class TextReport {
public:
    explicit TextReport(const Coverage::CoverageTree& tree);

    /** Lists below each window what was missed: elements, and events of elements that were used. */
    void setListsMissed(bool lists) { m_listsMissed = lists; }
    /** Lists below each window what was used, and in which contexts. */
    void setListsContexts(bool lists) { m_listsContexts = lists; }
    /** Lists below each window its groups, each with its members. */
    void setListsGroups(bool lists) { m_listsGroups = lists; }
    /** Digits behind the point of percentages. */
    void setPrecision(int digits) { m_precision = digits; }
    /** One of Config::ReportDefaults::sorts(). */
    void setOrder(const QString& order) { m_order = order; }
    /** Leaves out windows of which everything was used. */
    void setSkipsCovered(bool skips) { m_skipsCovered = skips; }
    /** Columns that the names of windows may have in the table; 0 for no limit, so that they can
     * be copied. What is listed below a window is never cut. */
    void setNameColumns(int columns) { m_nameColumns = columns; }
    /** Sentences that stand at the foot, in this order. */
    void setNotes(const QStringList& notes) { m_notes = notes; }

    QString toString() const;

private:
    void addWindows(TextTable& table, const QString& application, const QString& indentation) const;
    QString line(const QString& word, Coverage::NodeId node, const QString& rest = QString()) const;
    QStringList missedLines(Coverage::WindowId window) const;
    QStringList contextLines(Coverage::WindowId window) const;
    QStringList groupLines(Coverage::WindowId window) const;
    QStringList row(const QString& name, const Coverage::CoverageTree::Totals& totals) const;
    bool isSkipped(const Coverage::CoverageTree::Totals& totals) const;
    QStringList missedControls(Coverage::WindowId window) const;
    QStringList header() const;
    QStringList legend() const;
    QStringList notes(const Coverage::CoverageTree::Totals& totals, int emptyWindows) const;

    const Coverage::CoverageTree& m_tree;
    bool m_listsMissed = false;
    bool m_listsContexts = false;
    bool m_listsGroups = false;
    int m_precision = 0;
    QString m_order;
    bool m_skipsCovered = false;
    int m_nameColumns = 0;
    QStringList m_notes;
};

} // namespace Uicov::Report
