// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/leftovers.h"

#include "store/datafile.h"
#include "store/datafilepath.h"
#include "store/filelock.h"
#include "store/partfile.h"
#include "store/sql.h"

#include <QFile>

namespace Uicov::Store {

namespace {

/** Of a rollback journal; of a write-ahead log and its index. */
constexpr const char* journalEndings[] = {"-journal", "-wal", "-shm"};

QString journalOf(const QString& path, const char* ending) {
    return path + QLatin1String(ending);
}

} // namespace

bool hasJournals(const QString& path) {
    const QString file = resolved(path);
    for (const char* const ending : journalEndings) {
        if (QFile::exists(journalOf(file, ending))) {
            return true;
        }
    }
    return false;
}

void removeJournals(const QString& path) {
    const QString file = resolved(path);
    for (const char* const ending : journalEndings) {
        QFile::remove(journalOf(file, ending));
    }
}

void tidyUp(const QString& path) {
    // Whoever is killed while it writes leaves its lock file, so only then is there more to look
    // for.
    if (QFile::exists(FileLock::lockFileOf(path))) {
        FileLock lock;
        if (lock.tryToAcquire(path)) {
            PartFile::removeLeftovers(path);
        }
    }
    // SQLite takes an unfinished change back when a connection that may write reads.
    if (hasJournals(path) && DataFile::isOurs(path)) {
        Sql sql;
        if (sql.open(path, Sql::Access::Write)) {
            sql.value(QStringLiteral("PRAGMA user_version"));
        }
    }
}

} // namespace Uicov::Store
