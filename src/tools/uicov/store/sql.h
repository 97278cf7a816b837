// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include <memory>

class QSqlError;

namespace Uicov::Store {

/**
 * One connection to a SQLite file, closed with this. After the first statement that fails every
 * further one does nothing and fails too: check once, at the end.
 */
class Sql {
public:
    enum class Access {
        Read,
        Write,
        Private ///< to write a file that nobody else knows yet: in one piece, nothing beside it
    };

    Sql();
    ~Sql();
    Sql(const Sql&) = delete;
    Sql& operator=(const Sql&) = delete;

    /** The file has to be there; an empty one becomes a database at the first write. */
    bool open(const QString& path, Access access);

    bool isOk() const { return m_error.isEmpty(); }
    /** What failed first; empty when nothing did. */
    QString error() const { return m_error; }
    /** SQLite's number for what failed first, without its extension; 0 when SQLite did not fail. */
    int errorCode() const { return m_errorCode; }
    /** Forgets a failure after this statement, which undoes what led to it. */
    void recover(const QString& statement);
    /** Makes everything fail from here on. */
    void fail(const QString& error);

    /** Statements without results, separated by ";" at line ends. */
    bool execute(const QString& statements);
    /** The statement with these values in place of its "?", prepared at the first call; "?" stands
     * for nothing else in it. Results
     * are read with next(), which looks at nothing behind the first failure. */
    QSqlQuery& query(const QString& statement, std::initializer_list<QVariant> values = {});
    QSqlQuery& query(const QString& statement, const QVariant* values, int count);
    bool next(QSqlQuery& query);
    /** As query(), for statements without results. @return the id of an inserted row */
    qint64 insert(const QString& statement, std::initializer_list<QVariant> values);
    /** The one value that the statement gives; invalid when it gives none. */
    QVariant value(const QString& statement, std::initializer_list<QVariant> values = {});
    int changedRows(const QString& statement, std::initializer_list<QVariant> values);

private:
    QString withNames(const QString& statement);
    void fail(const QSqlError& error);

    QString m_connection;
    QSqlDatabase m_database;
    QHash<QString, std::shared_ptr<QSqlQuery>> m_prepared;
    /** ":p0", ":p1" and so on, in place of each "?". */
    QStringList m_names;
    QString m_error;
    int m_errorCode = 0;
};

} // namespace Uicov::Store
