// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"
#include "run/run.h"
#include "store/sql.h"

#include <QStringList>

#include <memory>
#include <optional>

namespace Uicov::Store {

class RunReader;
class RunWriter;

/**
 * A file with any number of runs, each once: a SQLite database whose tables docs/data-file.md
 * describes. What is changed is there once commit() has returned, all of it or nothing. Who writes
 * holds the file's lock.
 */
class DataFile {
public:
    static constexpr int schemaVersion = 2;

    DataFile();
    ~DataFile();

    enum class Pictures { Leave, Load };
    enum class Added { New, Better, Known };

    /** True when the file begins as a SQLite database does, of whatever kind. */
    static bool looksLikeDataFile(const QString& path);

    /** As looksLikeDataFile(), and made by uicov. */
    static bool isOurs(const QString& path);

    /**
     * Makes a new, empty data file, readable by its owner only. Nothing may stand there, and nobody
     * else may know it before the last commit(): see Sql::Access::Private.
     * @param shownAs what messages call it; empty for the path
     */
    std::optional<Base::Problem> create(const QString& path, const QString& shownAs = QString());
    /** Opens a data file, looking at what it is before anything else. */
    std::optional<Base::Problem> open(const QString& path, Sql::Access access,
                                      const QString& shownAs = QString());
    /** Keeps other programs from writing to it for as long as it is open. */
    std::optional<Base::Problem> holdStill();

    /**
     * Adds a run. Of one that is in the file already the more complete form stays, by a rule under
     * which it makes no difference which of the two came first.
     * @param added what became of it; null where that is of no interest
     * @param digest what the file that the run was read from says of it; empty to have it computed
     */
    std::optional<Base::Problem> add(const Runs::Run& run, Added* added = nullptr,
                                     const QByteArray& digest = QByteArray());
    /** Takes the run out, and what no other needs. Nothing happens when it is not there. */
    std::optional<Base::Problem> erase(const QString& uuid);
    /** What is added from here on can be taken back as a whole. Parts do not nest. */
    void beginPart();
    /** Takes back what was added since beginPart(), together with its failures. */
    void dropPart();
    /** Keeps what was added since beginPart(). */
    std::optional<Base::Problem> keepPart();

    /** Ends what was begun by the first add() or erase() since the last commit. */
    std::optional<Base::Problem> commit();

    /** UUIDs, by application, start and UUID: an order that tells nothing of how they came in. */
    QStringList runs();
    /** The run without its elements: what it is called, how complete it is, its contexts. */
    std::optional<Base::Problem> readAttributes(const QString& uuid, Runs::Run& run);
    /**
     * @param digest gets RunRank::digest of the run as it was written; null where nobody asks
     * @return the problem when it is not there, or not in the form in which runs are written
     */
    std::optional<Base::Problem> read(const QString& uuid, Pictures pictures, Runs::Run& run,
                                      QByteArray* digest = nullptr);

    /** Looks at every page of the file, which open() does not; the problem when one is damaged. */
    std::optional<Base::Problem> checkPages();

    /** To be called before open(): then even a file that was cut off can be opened, to read of it
     * what there is. */
    void setToleratesDamage(bool tolerates) { m_toleratesDamage = tolerates; }
    /** As runs(), of a damaged file: those that can be found, by UUID. */
    QStringList runsThatCanBeFound();
    /** Forgets the last failure, so that another run can be tried. */
    void recover();

    QString path() const { return m_path; }

private:
    bool connect(const QString& path, Sql::Access access, const QString& shownAs);
    std::optional<Base::Problem> check();
    std::optional<Base::Problem> failure() const;
    void begin();
    void migrate();
    void addColumns();
    void dropUnused();

    /** As messages call it. */
    QString m_path;
    /** Where it is. */
    QString m_place;
    Sql m_sql;
    std::unique_ptr<RunWriter> m_writer;
    std::unique_ptr<RunReader> m_reader;
    bool m_toleratesDamage = false;
    bool m_isInTransaction = false;
    bool m_hasRemoved = false;
    /** That of the open file. */
    int m_version = schemaVersion;
};

} // namespace Uicov::Store
