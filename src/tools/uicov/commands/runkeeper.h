// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"
#include "store/datafilewriter.h"
#include "store/filelock.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace Uicov::Console {
class Terminal;
}

namespace Uicov::Commands {

/**
 * Takes the recordings of a run's processes into the data file. The file's lock is held only while
 * it is written; where nothing was recorded it is not touched.
 */
class RunKeeper {
public:
    /** @param terminal outlives this; is told what is wrong with recordings that can be used */
    RunKeeper(const QString& dataFile, bool appends, Console::Terminal& terminal);

    /** To be called before keep(): the application ended by itself, so that a recording of its that
     * has no end was cut off. */
    void setEndedByItself(bool ended) { m_hasEndedByItself = ended; }

    /** The problem when the data file could not be written; the recordings are still there. */
    std::optional<Base::Problem> keep(const QStringList& recordings);

    /** Runs that recorded anything. */
    int runs() const { return m_runs; }
    qint64 elements() const { return m_elements; }
    /** Messages that carried a record. */
    qint64 records() const { return m_records; }
    /** Whether something that was sent is, or may be, missing; it has been told what. */
    bool isPartial() const { return m_isPartial; }
    /** The first thing that was warned about while recording; empty when nothing was. */
    QString firstWarning() const { return m_firstWarning; }

private:
    std::optional<Base::Problem> keepOne(const QString& recording, bool isOfApplication);
    std::optional<Base::Problem> begin();

    QString m_dataFile;
    Store::DataFileWriter::Mode m_mode;
    Console::Terminal& m_terminal;
    Store::FileLock m_lock;
    std::optional<Store::DataFileWriter> m_writer;
    bool m_hasEndedByItself = false;
    bool m_isPartial = false;
    int m_runs = 0;
    qint64 m_elements = 0;
    qint64 m_records = 0;
    QString m_firstWarning;
};

} // namespace Uicov::Commands
