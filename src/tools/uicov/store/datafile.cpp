// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/datafile.h"

#include "store/leftovers.h"
#include "store/partfile.h"
#include "store/runrank.h"
#include "store/runreader.h"
#include "store/runwriter.h"
#include "store/schema.h"
#include "store/schemacheck.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QtEndian>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace Uicov::Store {

using Base::Message;
using Base::Problem;
using Runs::Run;

namespace {

/** In the file's header, where file(1) and others look for what a database is. */
constexpr qint32 applicationId = 0x75696376; // "uicv"
constexpr char databaseStart[] = "SQLite format 3";

Problem foreign(const QString& path, const QString& what) {
    return {Message::InputForeign,
            path + QStringLiteral(": is ") + what +
                QStringLiteral("; name a data file or recording that uicov made")};
}

} // namespace

DataFile::DataFile() = default;
DataFile::~DataFile() = default;

bool DataFile::connect(const QString& path, Sql::Access access, const QString& shownAs) {
    m_place = path;
    m_path = shownAs.isEmpty() ? path : shownAs;
    m_writer = std::make_unique<RunWriter>(m_sql);
    m_reader = std::make_unique<RunReader>(m_sql);
    return m_sql.open(path, access);
}

bool DataFile::looksLikeDataFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) &&
           file.read(sizeof databaseStart) == QByteArray(databaseStart, sizeof databaseStart);
}

bool DataFile::isOurs(const QString& path) {
    constexpr qint64 idOffset = 68; // of the application's number in the header of a database
    QFile file(path);
    return looksLikeDataFile(path) && file.open(QIODevice::ReadOnly) && file.seek(idOffset) &&
           qFromBigEndian<qint32>(file.read(sizeof applicationId)
                                      .leftJustified(sizeof applicationId, '\0')
                                      .constData()) == applicationId;
}

std::optional<Problem> DataFile::create(const QString& path, const QString& shownAs) {
    // Made here and not by SQLite, which would let everybody read it.
    const int descriptor = ::open(QFile::encodeName(path).constData(),
                                  O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor < 0) {
        return Problem{Message::OutputNotWritable,
                       (shownAs.isEmpty() ? path : shownAs) + QStringLiteral(": cannot be made: ") +
                           qt_error_string(errno) +
                           QStringLiteral("; choose another place with -o")};
    }
    ::close(descriptor);
    if (!connect(path, Sql::Access::Private, shownAs)) {
        return failure();
    }
    begin();
    m_sql.execute(QStringLiteral("PRAGMA application_id = %1").arg(applicationId));
    m_sql.execute(QStringLiteral("PRAGMA user_version = %1").arg(schemaVersion));
    m_sql.execute(QString::fromLatin1(schemaStatements));
    return commit();
}

std::optional<Problem> DataFile::open(const QString& path, Sql::Access access,
                                      const QString& shownAs) {
    const QFileInfo info(path);
    if (!info.exists()) {
        return Problem{Message::InputMissing,
                       path + QStringLiteral(": there is no such file; check the path")};
    }
    if (access != Sql::Access::Private) {
        tidyUp(path);
    }
    const bool isOpen = connect(path, access, shownAs);
    if (isOpen && m_toleratesDamage) {
        // SQLite then reads what there is of a file that was cut.
        m_sql.execute(QStringLiteral("PRAGMA writable_schema = ON"));
    }
    if (!isOpen) {
        return Problem{Message::InputUnreadable, m_path + QStringLiteral(": cannot be opened: ") +
                                                     m_sql.error() +
                                                     QStringLiteral("; check its mode")};
    }
    return check();
}

std::optional<Problem> DataFile::check() {
    const int id = m_sql.value(QStringLiteral("PRAGMA application_id")).toInt();
    const int version = m_sql.value(QStringLiteral("PRAGMA user_version")).toInt();
    if (!m_sql.isOk()) {
        return failure();
    }
    if (id != applicationId) {
        return foreign(m_path, QStringLiteral("a SQLite database of something else"));
    }
    if (version > schemaVersion) {
        return Problem{Message::InputNewer,
                       m_path +
                           QStringLiteral(": has schema version %1, and this uicov reads up to "
                                          "version %2; use a newer uicov")
                               .arg(version)
                               .arg(schemaVersion)};
    }
    if (version < 1) {
        return foreign(m_path, QStringLiteral("a data file of schema version 0, which never was"));
    }
    const QString stranger = foreignObjectIn(m_sql);
    if (!m_sql.isOk()) {
        return failure();
    }
    if (!stranger.isEmpty()) {
        return Problem{Message::InputForeign,
                       m_path + QStringLiteral(": has ") + stranger +
                           QStringLiteral(", which uicov never makes, and is not used; name a "
                                          "data file as uicov made it")};
    }
    m_version = version;
    m_reader->setExtended(version >= schemaVersion);
    return std::nullopt;
}

std::optional<Problem> DataFile::failure() const {
    if (m_sql.isOk()) {
        return std::nullopt;
    }
    // SQLite's numbers.
    constexpr int busy = 5;
    constexpr int locked = 6;
    constexpr int readOnly = 8;
    constexpr int ioError = 10;
    constexpr int full = 13;
    switch (m_sql.errorCode()) {
    case busy:
    case locked:
        return Problem{Message::DataFileBusy,
                       m_path + QStringLiteral(": another program is writing to it: ") +
                           m_sql.error() + QStringLiteral("; try again when it is done")};
    case readOnly:
        return Problem{Message::OutputNotWritable,
                       m_path + QStringLiteral(": may not be written, which has to be done first "
                                               "where another program was interrupted while it "
                                               "changed it; check its mode and its folder's")};
    case ioError:
    case full:
        return Problem{Message::OutputNotWritable,
                       m_path + QStringLiteral(": cannot be written or read: ") +
                           PartFile::reasonOfFailedWrite(m_place) +
                           QStringLiteral("; free some space on its disk, or choose another place "
                                          "with -o")};
    default:
        return Problem{Message::DataFileDamaged,
                       m_path + QStringLiteral(": cannot be used as a data file: ") +
                           m_sql.error() +
                           QStringLiteral("; uicov combine -o NEWFILE saves what can be read of "
                                          "it, or use a copy")};
    }
}

std::optional<Problem> DataFile::holdStill() {
    // What a write-ahead log holds goes into the file, so that the file is all that there is.
    const QVariant mode = m_sql.value(QStringLiteral("PRAGMA journal_mode = DELETE"));
    if (m_sql.isOk() && mode.toString() == QLatin1String("wal")) {
        m_sql.fail(QStringLiteral("another program has its write-ahead log open"));
    }
    m_sql.execute(QStringLiteral("BEGIN IMMEDIATE"));
    return failure();
}

void DataFile::begin() {
    if (!m_isInTransaction) {
        // What is written here fits together, and having it checked again takes a tenth of
        // combining.
        m_sql.execute(QStringLiteral("PRAGMA foreign_keys = OFF"));
        m_isInTransaction = m_sql.execute(QStringLiteral("BEGIN IMMEDIATE"));
        migrate();
    }
}

/** Brings the tables to the present version before anything is written to them, in the same
 * transaction. */
void DataFile::migrate() {
    if (m_version >= schemaVersion) {
        return;
    }
    // Another process may have done it between the opening and the lock.
    if (m_sql.value(QStringLiteral("PRAGMA user_version")).toInt() < schemaVersion) {
        addColumns();
    }
    m_version = schemaVersion;
    m_reader->setExtended(true);
}

/** What the tables of version 1 lack, in the order in which a new file has them. */
void DataFile::addColumns() {
    m_sql.execute(
        QStringLiteral("ALTER TABLE run ADD COLUMN extension TEXT NOT NULL DEFAULT '';\n"
                       "ALTER TABLE element ADD COLUMN attributes INTEGER REFERENCES text (id);\n"
                       "ALTER TABLE element ADD COLUMN was_enabled INTEGER NOT NULL DEFAULT 1;\n"
                       "ALTER TABLE element ADD COLUMN was_seen INTEGER NOT NULL DEFAULT 0;\n"
                       "ALTER TABLE hit ADD COLUMN first INTEGER;\n"
                       "ALTER TABLE hit ADD COLUMN last INTEGER;"));
    m_sql.execute(QStringLiteral("PRAGMA user_version = %1").arg(schemaVersion));
}

std::optional<Problem> DataFile::add(const Run& run, Added* added, const QByteArray& digest) {
    begin();
    const Added result = m_writer->write(
        run, digest.isEmpty() ? RunRank::of(run)
                              : RunRank{run.messages, run.isComplete, run.bytesLost, digest});
    m_hasRemoved = m_hasRemoved || result == Added::Better;
    if (added != nullptr) {
        *added = result;
    }
    return failure();
}

std::optional<Problem> DataFile::erase(const QString& uuid) {
    begin();
    m_hasRemoved = m_writer->remove(uuid) || m_hasRemoved;
    return failure();
}

/** Texts and pictures that only a removed run had. */
void DataFile::dropUnused() {
    m_sql.execute(QStringLiteral(
        "DELETE FROM picture WHERE id NOT IN\n"
        "  (SELECT picture FROM element WHERE picture IS NOT NULL);\n"
        "DELETE FROM text WHERE id NOT IN\n"
        "  (SELECT class FROM element UNION SELECT events FROM element\n"
        "   UNION SELECT type FROM element WHERE type IS NOT NULL\n"
        "   UNION SELECT text FROM element WHERE text IS NOT NULL\n"
        "   UNION SELECT key FROM element WHERE key IS NOT NULL\n"
        "   UNION SELECT structure_key FROM element WHERE structure_key IS NOT NULL\n"
        "   UNION SELECT attributes FROM element WHERE attributes IS NOT NULL\n"
        "   UNION SELECT event FROM hit);"));
}

void DataFile::beginPart() {
    begin();
    m_sql.execute(QStringLiteral("SAVEPOINT part"));
}

void DataFile::dropPart() {
    m_sql.recover(QStringLiteral("ROLLBACK TO part"));
    m_sql.execute(QStringLiteral("RELEASE part"));
    m_writer->forgetIds();
}

std::optional<Problem> DataFile::keepPart() {
    m_sql.execute(QStringLiteral("RELEASE part"));
    return failure();
}

std::optional<Problem> DataFile::checkPages() {
    const QString result = m_sql.value(QStringLiteral("PRAGMA quick_check(1)")).toString();
    if (m_sql.isOk() && result != QLatin1String("ok")) {
        m_sql.fail(result);
    }
    return failure();
}

std::optional<Problem> DataFile::commit() {
    if (m_isInTransaction) {
        if (m_hasRemoved) {
            dropUnused();
            m_writer->forgetIds();
            m_hasRemoved = false;
        }
        m_sql.execute(QStringLiteral("COMMIT"));
        m_isInTransaction = false;
    }
    return failure();
}

QStringList DataFile::runsThatCanBeFound() {
    QSet<QString> uuids;
    for (const char* const order : {"", " ORDER BY id DESC"}) { // from both sides of a gap
        QSqlQuery& query =
            m_sql.query(QStringLiteral("SELECT uuid FROM run NOT INDEXED") + QLatin1String(order));
        while (m_sql.next(query)) {
            uuids.insert(query.value(0).toString());
        }
        recover();
    }
    QStringList sorted = uuids.values();
    sorted.sort();
    return sorted;
}

void DataFile::recover() {
    m_sql.recover(QString());
    m_reader = std::make_unique<RunReader>(m_sql); // texts that it knows may be half-read
    m_reader->setExtended(m_version >= schemaVersion);
}

QStringList DataFile::runs() {
    QStringList uuids;
    QSqlQuery& query =
        m_sql.query(QStringLiteral("SELECT uuid FROM run ORDER BY application, started, uuid"));
    while (m_sql.next(query)) {
        uuids.append(query.value(0).toString());
    }
    return uuids;
}

std::optional<Problem> DataFile::readAttributes(const QString& uuid, Run& run) {
    m_reader->readAttributes(uuid, run);
    return failure();
}

std::optional<Problem> DataFile::read(const QString& uuid, Pictures pictures, Run& run,
                                      QByteArray* digest) {
    m_reader->read(uuid, pictures == Pictures::Load, run);
    if (digest != nullptr) {
        *digest = m_reader->digest();
    }
    return failure();
}

} // namespace Uicov::Store
