// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace Uicov::Report {

/** Lines of cells in columns: the first column to the left, all others to the right. */
class TextTable {
public:
    void addRow(const QStringList& cells);
    /** A line of dashes across the whole table. */
    void addRule();
    /** A line that is printed as it is and has no part in the widths. */
    void addLine(const QString& line);

    QString toString() const;

private:
    struct Row {
        enum class Kind { Cells, Rule, Line };

        Kind kind;
        QStringList cells;
    };

    QVector<int> columnWidths() const;

    QVector<Row> m_rows;
};

} // namespace Uicov::Report
