// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/rowbatch.h"

#include <QStringList>

namespace Uicov::Store {

namespace {

QStringList repeated(const QString& text, int count) {
    QStringList list;
    for (int i = 0; i < count; ++i) {
        list.append(text);
    }
    return list;
}

} // namespace

RowBatch::RowBatch(Sql& sql, const char* table, int columns)
    : m_sql(sql)
    , m_columns(columns) {
    const QString separator = QStringLiteral(", ");
    const QString row = QLatin1Char('(') + repeated(QStringLiteral("?"), columns).join(separator) +
                        QLatin1Char(')');
    const QString start = QStringLiteral("INSERT INTO %1 VALUES ").arg(QLatin1String(table));
    m_single = start + row;
    m_several = start + repeated(row, rowsAtOnce).join(separator);
    m_values.reserve(rowsAtOnce * columns);
}

void RowBatch::add(std::initializer_list<QVariant> row) {
    Q_ASSERT(static_cast<int>(row.size()) == m_columns);
    for (const QVariant& value : row) {
        m_values.append(value);
    }
    if (m_values.size() == rowsAtOnce * m_columns) {
        m_sql.query(m_several, m_values.constData(), m_values.size());
        m_values.clear();
    }
}

void RowBatch::flush() {
    for (int first = 0; first < m_values.size(); first += m_columns) {
        m_sql.query(m_single, m_values.constData() + first, m_columns);
    }
    m_values.clear();
}

} // namespace Uicov::Store
