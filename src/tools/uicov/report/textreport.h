#pragma once

#include "report/coveragetree.h"

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
    explicit TextReport(const CoverageTree& tree);

    /** Lists below each window what was missed or only shown. */
    void setListsMissed(bool lists) { m_listsMissed = lists; }
    /** Columns that a line may have; 0 for no limit. */
    void setWidth(int columns) { m_width = columns; }
    /** Sentences that stand at the foot, in this order. */
    void setNotes(const QStringList& notes) { m_notes = notes; }

    QString toString() const;

    /** Used elements of all, in percent; 0 only for none and 100 only for all. */
    static QString percent(int part, int whole);

private:
    void addWindows(TextTable& table, const QString& application, const QString& indentation) const;
    QString missedLine(int node) const;
    QStringList missedLines(int window) const;
    QString stepsBelowWindow(int node) const;
    static QStringList legend();
    QStringList notes(const CoverageTree::Totals& totals, int emptyWindows) const;

    const CoverageTree& m_tree;
    bool m_listsMissed = false;
    int m_width = 0;
    QStringList m_notes;
};

} // namespace Uicov::Report
