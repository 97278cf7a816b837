#pragma once

#include "report/coverage.h"
#include "report/gatekeeper.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace Uicov::Report {

/** The report as a table for pull requests and wikis. Texts of applications stay data. */
class MarkdownReport {
public:
    explicit MarkdownReport(const Coverage& coverage);

    void setListsMissed(bool lists) { m_listsMissed = lists; }
    void setListsContexts(bool lists) { m_listsContexts = lists; }
    void setPrecision(int digits) { m_precision = digits; }
    void setOrder(const QString& order) { m_order = order; }
    void setSkipsCovered(bool skips) { m_skipsCovered = skips; }
    void setNotes(const QStringList& notes) { m_notes = notes; }
    void setGates(const QVector<GateResult>& gates) { m_gates = gates; }

    QString toString() const;

    /** The text so that no character of it means anything to a terminal, Markdown or HTML. */
    static QString escaped(const QString& text);
    /** The same for a text that was made fit for a terminal already. */
    static QString markup(const QString& displayed);

private:
    QString row(const QString& name, const CoverageTree::Totals& totals) const;
    QString line(int node, const char* title, const QStringList& names) const;
    QStringList lines(int window) const;

    const Coverage& m_coverage;
    bool m_listsMissed = false;
    bool m_listsContexts = false;
    int m_precision = 0;
    QString m_order;
    bool m_skipsCovered = false;
    QStringList m_notes;
    QVector<GateResult> m_gates;
};

} // namespace Uicov::Report
