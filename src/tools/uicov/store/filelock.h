#pragma once

#include "console/message.h"

#include <QString>

#include <optional>

namespace Uicov::Console {
class Terminal;
}

namespace Uicov::Store {

/**
 * Keeps all others from writing to a data file for as long as this lives: who comes second waits,
 * and says for whom. A lock file beside the data file is locked, never merely there, so that one
 * of a process that was killed is in nobody's way. Not for threads of one process.
 */
class FileLock {
public:
    static constexpr int patience = 30; ///< seconds

    FileLock() = default;
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /**
     * Waits until the lock is held.
     * @param path    the data file, which need not be there yet
     * @param seconds how long to wait at most
     * @return the problem when it could not be had
     */
    std::optional<Console::Problem> acquire(const QString& path, Console::Terminal& terminal,
                                            int seconds = patience);
    void release();

    /** Where the lock for that data file is. */
    static QString lockFileOf(const QString& path);

private:
    bool tryToLock();
    qint64 holder() const;

    QString m_lockFile;
    int m_descriptor = -1;
};

} // namespace Uicov::Store
