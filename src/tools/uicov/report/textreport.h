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

    /** Lists below each window what was missed: elements, and events of elements that were used. */
    void setListsMissed(bool lists) { m_listsMissed = lists; }
    /** Lists below each window what was used, and in which contexts. */
    void setListsContexts(bool lists) { m_listsContexts = lists; }
    /** Digits behind the point of percentages. */
    void setPrecision(int digits) { m_precision = digits; }
    /** One of Config::ReportDefaults::sorts(). */
    void setOrder(const QString& order) { m_order = order; }
    /** Leaves out windows of which everything was used. */
    void setSkipsCovered(bool skips) { m_skipsCovered = skips; }
    /** Columns that a line may have; 0 for no limit. */
    void setWidth(int columns) { m_width = columns; }
    /** Sentences that stand at the foot, in this order. */
    void setNotes(const QStringList& notes) { m_notes = notes; }

    QString toString() const;

    /** The element's steps below its window, shortened where they are many. */
    static QString stepsBelowWindow(const CoverageTree& tree, int node);
    /** A step with its texts made fit for one line. */
    static QString displayed(Identity::ElementKey::Step step);
    /** Events of the element that count and did not happen. */
    static QStringList uncoveredEvents(const CoverageTree::Node& element);
    /** Whether it counts and has such events. */
    static bool lacksEvents(const CoverageTree& tree, int node);
    /** Contexts in which the element was used, by name, fit for one line. */
    static QStringList contextsOf(const CoverageTree& tree, int node);
    /** "used", "shown" or "missed". */
    static QString wordFor(State state);

private:
    void addWindows(TextTable& table, const QString& application, const QString& indentation) const;
    QString line(const QString& word, int node, const QString& rest = QString()) const;
    QStringList missedLines(int window) const;
    QStringList contextLines(int window) const;
    QStringList row(const QString& name, const CoverageTree::Totals& totals) const;
    bool isSkipped(const CoverageTree::Totals& totals) const;
    static QStringList legend();
    QStringList notes(const CoverageTree::Totals& totals, int emptyWindows) const;

    const CoverageTree& m_tree;
    bool m_listsMissed = false;
    bool m_listsContexts = false;
    int m_precision = 0;
    QString m_order;
    bool m_skipsCovered = false;
    int m_width = 0;
    QStringList m_notes;
};

} // namespace Uicov::Report
