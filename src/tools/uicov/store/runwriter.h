// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "run/run.h"
#include "store/datafile.h"
#include "store/runrank.h"
#include "store/sql.h"

#include <QHash>
#include <QVariant>

namespace Uicov::Store {

class RowBatch;

/** Writes one run into the tables of a data file, inside of a transaction of its owner. */
class RunWriter {
public:
    /** @param sql outlives this; tells of failures */
    explicit RunWriter(Sql& sql);

    /** Writes the run unless the file has it in a form that is as complete. */
    DataFile::Added write(const Runs::Run& run, const RunRank& rank);

    /** Takes the run out, but not the texts and pictures that only it had.
     * @return false when it is not there */
    bool remove(const QString& uuid);

    /** To be called when rows that it made may have gone. */
    void forgetIds();

private:
    qint64 writeAttributes(const Runs::Run& run, const QByteArray& digest);
    void writeElements(qint64 id, const Runs::Run& run);
    void writeElement(RowBatch& rows, qint64 id, const Runs::Run& run, int number, int position);
    QVariant textId(const QString& text);
    QVariant eventsId(const QStringList& events);
    QVariant textOrNull(const QString& text, bool isNull);
    QVariant pictureId(const QByteArray& hash, const Runs::Run& run);

    Sql& m_sql;
    QHash<QString, qint64> m_texts;
    /** Of lists of events, which few elements do not share with others. */
    QHash<QStringList, qint64> m_events;
    QVector<QString> m_keys;
    QVector<QString> m_structureKeys;
};

} // namespace Uicov::Store
