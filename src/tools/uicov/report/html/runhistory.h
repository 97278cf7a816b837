// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coverageresult.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

#include <vector>

namespace Uicov::Runs {
struct Run;
}

namespace Uicov::Report::Html {

/**
 * The runs of a page one by one: what each is, what it used by itself, and what it was the first to
 * use, under the same rules as all of them together. Runs are added in their order, each after it
 * was added to the coverage, which is finished before finish().
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
        Coverage::CoverageTree::Totals totals;
        /** Elements that no run before had used. */
        int firstUsed = 0;
    };

    void add(const Runs::Run& run, const Coverage::CoverageResult& coverage);
    /** Fills in what each run was the first to use: only now it is known what is left out. */
    void finish(const Coverage::CoverageResult& coverage);

    const QVector<Row>& rows() const { return m_rows; }
    int partialRuns() const;

private:
    QVector<Row> m_rows;
    /** By node: the row of the run that used it first; -1 for none. */
    std::vector<int> m_firstUse;
};

} // namespace Uicov::Report::Html
