// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/sql.h"

#include <QRegularExpression>
#include <QSqlError>
#include <QStringList>
#include <QUuid>

namespace Uicov::Store {

Sql::Sql()
    : m_connection(QUuid::createUuid().toString())
    , m_database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection)) {}

Sql::~Sql() {
    m_prepared.clear();
    m_database.close();
    m_database = QSqlDatabase(); // a connection in use cannot be removed
    QSqlDatabase::removeDatabase(m_connection);
}

bool Sql::open(const QString& path, Access access) {
    m_error.clear();
    m_errorCode = 0;
    m_prepared.clear();
    m_database.close();
    m_database.setDatabaseName(path);
    // Others may hold the file for the moment of a commit, not longer: writers queue elsewhere.
    QString options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000");
    if (access == Access::Read) {
        options += QStringLiteral(";QSQLITE_OPEN_READONLY");
    }
    m_database.setConnectOptions(options);
    if (!m_database.open()) {
        fail(m_database.lastError());
        return false;
    }
    // What a foreign file's schema defines must not run when it is read.
    execute(QStringLiteral("PRAGMA trusted_schema = OFF"));
    if (access == Access::Private) {
        // It is synced as a whole before anybody sees it, and thrown away if anything fails.
        execute(QStringLiteral("PRAGMA journal_mode = MEMORY;\n"
                               "PRAGMA synchronous = OFF"));
    }
    return isOk();
}

void Sql::fail(const QString& error) {
    if (m_error.isEmpty()) {
        m_error = error.simplified();
    }
}

void Sql::fail(const QSqlError& error) {
    if (isOk()) {
        constexpr int primary = 0xff; // further bits say more exactly what failed
        m_errorCode = error.nativeErrorCode().toInt() & primary;
        fail(error.text());
    }
}

void Sql::recover(const QString& statement) {
    m_error.clear();
    m_errorCode = 0;
    execute(statement);
}

bool Sql::execute(const QString& statements) {
    static const QRegularExpression end(QStringLiteral(";(?=\\s*(\\n|$))"));
    const QStringList parts = statements.split(end);
    for (const QString& part : parts) {
        if (!isOk()) {
            break;
        }
        QSqlQuery query(m_database);
        if (!part.trimmed().isEmpty() && !query.exec(part)) {
            fail(query.lastError());
        }
    }
    return isOk();
}

/** Qt makes up a name for each value that is bound by its position, which takes longer than all the
 * rest of binding it. So they have names. */
QString Sql::withNames(const QString& statement) {
    const QStringList parts = statement.split(QLatin1Char('?'));
    QString named = parts.first();
    for (int i = 1; i < parts.size(); ++i) {
        if (m_names.size() < i) {
            m_names.append(QStringLiteral(":p%1").arg(i - 1));
        }
        named += m_names.at(i - 1) + parts.at(i);
    }
    return named;
}

QSqlQuery& Sql::query(const QString& statement, std::initializer_list<QVariant> values) {
    return query(statement, values.begin(), static_cast<int>(values.size()));
}

QSqlQuery& Sql::query(const QString& statement, const QVariant* values, int count) {
    std::shared_ptr<QSqlQuery>& prepared = m_prepared[statement];
    if (!prepared) {
        prepared = std::make_shared<QSqlQuery>(m_database);
        prepared->setForwardOnly(true);
    }
    // Asked for first after a failure, it is prepared when that was recovered from.
    const bool isPrepared = !prepared->lastQuery().isEmpty();
    if (isOk() && !isPrepared && !prepared->prepare(withNames(statement))) {
        fail(prepared->lastError());
    }
    if (isOk()) {
        for (int i = 0; i < count; ++i) {
            prepared->bindValue(m_names.at(i), values[i]);
        }
        if (!prepared->exec()) {
            fail(prepared->lastError());
        }
    }
    return *prepared;
}

bool Sql::next(QSqlQuery& query) {
    if (!isOk()) {
        return false;
    }
    if (query.next()) {
        return true;
    }
    if (query.lastError().isValid()) {
        fail(query.lastError());
    }
    query.finish();
    return false;
}

qint64 Sql::insert(const QString& statement, std::initializer_list<QVariant> values) {
    const QSqlQuery& done = query(statement, values);
    return isOk() ? done.lastInsertId().toLongLong() : 0;
}

QVariant Sql::value(const QString& statement, std::initializer_list<QVariant> values) {
    QSqlQuery& found = query(statement, values);
    if (!next(found)) {
        return {};
    }
    QVariant result = found.value(0);
    found.finish();
    return result;
}

int Sql::changedRows(const QString& statement, std::initializer_list<QVariant> values) {
    const QSqlQuery& done = query(statement, values);
    return isOk() ? done.numRowsAffected() : 0;
}

} // namespace Uicov::Store
