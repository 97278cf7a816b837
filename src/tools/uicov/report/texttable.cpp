// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/texttable.h"

#include "base/displaytext.h"

namespace Uicov::Report {

namespace {

constexpr int gap = 2;

} // namespace

void TextTable::addRow(const QStringList& cells) {
    m_rows.append({Row::Kind::Cells, cells});
}

void TextTable::addRule() {
    m_rows.append({Row::Kind::Rule, {}});
}

void TextTable::addLine(const QString& line) {
    m_rows.append({Row::Kind::Line, {line}});
}

QVector<int> TextTable::columnWidths() const {
    QVector<int> widths;
    for (const Row& row : m_rows) {
        if (row.kind != Row::Kind::Cells) {
            continue;
        }
        widths.resize(qMax(widths.size(), row.cells.size()));
        for (int i = 0; i < row.cells.size(); ++i) {
            widths[i] = qMax(widths.at(i), Base::displayWidth(row.cells.at(i)));
        }
    }
    return widths;
}

QString TextTable::toString() const {
    const QVector<int> widths = columnWidths();
    int total = gap * qMax(0, widths.size() - 1);
    for (const int width : widths) {
        total += width;
    }
    QString text;
    for (const Row& row : m_rows) {
        QString line;
        if (row.kind == Row::Kind::Rule) {
            line = QString(total, QLatin1Char('-'));
        } else if (row.kind == Row::Kind::Line) {
            line = row.cells.first();
        }
        for (int i = 0; row.kind == Row::Kind::Cells && i < row.cells.size(); ++i) {
            line += i == 0 ? Base::padded(row.cells.at(i), widths.at(i))
                           : Base::paddedLeft(row.cells.at(i), widths.at(i) + gap);
        }
        text += line + QLatin1Char('\n');
    }
    return text;
}

} // namespace Uicov::Report
