#pragma once

#include "report/coveragetree.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

#include <vector>

namespace Uicov::Store {
struct Run;
}

namespace Uicov::Report::Html {

/**
 * The runs of a page one by one: what each is, what it used by itself, and what it was the first to
 * use. Runs are added in their order, each after it was collected into the tree.
 */
class RunHistory {
public:
    struct Row {
        QString application;
        QString started;
        QString qtVersion;
        QString platform;
        QString locale;
        QString architecture;
        QMap<QString, QString> labels;
        /** Without the one that has no name. */
        QStringList contexts;
        bool isComplete = true;
        QString partialReason;
        /** Of this run alone. */
        CoverageTree::Totals totals;
        /** Elements that no run before had used. */
        int firstUsed = 0;
    };

    void add(const Store::Run& run, const CoverageTree& tree);

    const QVector<Row>& rows() const { return m_rows; }
    int partialRuns() const;

private:
    QVector<Row> m_rows;
    std::vector<bool> m_isUsed;
};

} // namespace Uicov::Report::Html
