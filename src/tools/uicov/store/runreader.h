// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "run/run.h"
#include "store/sql.h"

#include <QHash>
#include <QSet>

namespace Uicov::Store {

/**
 * Reads one run out of the tables of a data file. Whatever the tables hold, the run that comes out
 * is sound: what does not fit together fails, as a damaged file does.
 */
class RunReader {
public:
    /** @param sql outlives this; tells of failures */
    explicit RunReader(Sql& sql);

    /** Whether the tables have what version 2 of the schema added; they have unless this is told
     * otherwise. */
    void setExtended(bool isExtended) { m_isExtended = isExtended; }

    /** All but the elements. */
    void readAttributes(const QString& uuid, Runs::Run& run);
    void read(const QString& uuid, bool withPictures, Runs::Run& run);
    /** RunRank::digest of the run that was read last, as it was when the run was written. */
    const QByteArray& digest() const { return m_digest; }

private:
    struct Listing {
        int parent;
        int position;
        int child;
    };

    void readElements(Runs::Run& run);
    Runs::RunElement elementFrom(const QSqlQuery& row);
    void linkChildren(Runs::Run& run);
    void readHits(Runs::Run& run);
    void readPictures(Runs::Run& run);
    QString textById(const QVariant& id);
    QStringList eventsById(const QVariant& id);
    QMap<QString, QString> attributesById(const QVariant& id);
    bool isElement(const Runs::Run& run, int number) const;

    Sql& m_sql;
    bool m_isExtended = true;
    qint64 m_id = 0;
    QByteArray m_digest;
    QHash<qint64, QString> m_texts;
    QHash<qint64, QStringList> m_events;
    std::vector<Listing> m_listings;
};

} // namespace Uicov::Store
