// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/schemacheck.h"

#include "store/schema.h"
#include "store/sql.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

namespace Uicov::Store {

namespace {

/** A table as its statement defines it, without comments and with single blanks only. */
struct Table {
    /** Columns and constraints. */
    QSet<QString> parts;
    /** What stands behind them. */
    QString options;
};

QString simplified(const QString& statement) {
    static const QRegularExpression comment(QStringLiteral("--[^\n]*"));
    return QString(statement).remove(comment).simplified();
}

/** Where the bracket that the text begins with is closed; -1 where it is not. */
int endOfBrackets(const QString& text) {
    int depth = 0;
    for (int i = 0; i < text.size(); ++i) {
        depth += text.at(i) == QLatin1Char('(') ? 1 : text.at(i) == QLatin1Char(')') ? -1 : 0;
        if (depth == 0) {
            return i;
        }
    }
    return -1;
}

QSet<QString> partsOf(const QString& body) {
    QSet<QString> parts;
    QString part;
    int depth = 0;
    for (const QChar character : body) {
        depth += character == QLatin1Char('(') ? 1 : character == QLatin1Char(')') ? -1 : 0;
        if (depth == 0 && character == QLatin1Char(',')) {
            parts.insert(part.trimmed());
            part.clear();
        } else {
            part += character;
        }
    }
    return parts << part.trimmed();
}

/** False when the statement makes no table of that name as ours are made. */
bool parseTable(const QString& statement, const QString& name, Table& table) {
    const QString text = simplified(statement);
    const QString start = QStringLiteral("CREATE TABLE %1 ").arg(name);
    const QString rest = text.mid(start.size());
    const int end = text.startsWith(start) ? endOfBrackets(rest) : -1;
    if (end < 1) {
        return false;
    }
    table = {partsOf(rest.mid(1, end - 1)), rest.mid(end + 1).trimmed()};
    return true;
}

/** What a new file has: its tables, and of its views the names. */
struct Schema {
    Schema() {
        static const QRegularExpression object(QStringLiteral("CREATE (TABLE|VIEW) (\\w+)[^;]*"));
        auto found = object.globalMatch(simplified(QString::fromLatin1(schemaStatements)));
        while (found.hasNext()) {
            const QRegularExpressionMatch match = found.next();
            if (match.captured(1) == QLatin1String("VIEW")) {
                views.insert(match.captured(2));
            } else {
                parseTable(match.captured(0), match.captured(2), tables[match.captured(2)]);
            }
        }
    }

    QHash<QString, Table> tables;
    QSet<QString> views;
};

/** Columns may be missing, which later versions added; each that is there has to be as ours is. */
bool isOurs(const Schema& ours, const QString& name, const QString& statement) {
    const auto expected = ours.tables.constFind(name);
    Table table;
    return expected != ours.tables.cend() && parseTable(statement, name, table) &&
           table.options == expected->options && (table.parts - expected->parts).isEmpty();
}

bool isOurs(const Schema& ours, const QString& type, const QString& name, const QString& tableName,
            const QString& statement) {
    // What SQLite makes by itself: for UNIQUE and PRIMARY KEY, and for ANALYZE.
    if (type == QLatin1String("index")) {
        return statement.isEmpty() && name.startsWith(QLatin1String("sqlite_autoindex_")) &&
               ours.tables.contains(tableName);
    }
    if (type == QLatin1String("table")) {
        static const QRegularExpression statistics(
            QStringLiteral("^CREATE TABLE (sqlite_stat[14])\\([a-z,]+\\)$"));
        const QRegularExpressionMatch match = statistics.match(statement);
        return match.hasMatch() ? match.captured(1) == name : isOurs(ours, name, statement);
    }
    // Views are for people: nothing here reads them, so an earlier form is as good.
    return type == QLatin1String("view") && ours.views.contains(name);
}

} // namespace

QString foreignObjectIn(Sql& sql) {
    static const Schema ours;
    QSqlQuery& row =
        sql.query(QStringLiteral("SELECT type, name, tbl_name, sql FROM sqlite_master"));
    QString foreign;
    while (sql.next(row)) {
        const QString type = row.value(0).toString();
        const QString name = row.value(1).toString();
        if (foreign.isEmpty() &&
            !isOurs(ours, type, name, row.value(2).toString(), row.value(3).toString())) {
            foreign = QStringLiteral("the %1 \"%2\"").arg(type, name);
        }
    }
    return foreign;
}

} // namespace Uicov::Store
