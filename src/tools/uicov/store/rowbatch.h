// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "store/sql.h"

#include <QVariant>
#include <QVector>

namespace Uicov::Store {

/**
 * Inserts rows of one table several at a time: to begin and end a statement takes longer than a
 * row. What was added is in the table after flush(). Lives on the stack, shorter than the database.
 */
class RowBatch {
public:
    /** @param table   its name
     * @param columns how many values each row has */
    RowBatch(Sql& sql, const char* table, int columns);

    void add(std::initializer_list<QVariant> row);
    void flush();

private:
    static constexpr int rowsAtOnce = 16;

    Sql& m_sql;
    int m_columns;
    QString m_single;
    QString m_several;
    QVector<QVariant> m_values;
};

} // namespace Uicov::Store
