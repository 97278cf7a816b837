// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/deferredend.h"
#include "base/message.h"

#include <QString>

#include <functional>
#include <optional>

namespace Uicov::Store {

/**
 * Keeps all others from writing to a data file for as long as this lives: who comes second waits,
 * and says for whom. What asks the process to end waits until it is released. A lock file beside
 * the data file is locked, never merely there, so that one of a process that was killed is in
 * nobody's way. Not for threads of one process.
 */
class FileLock {
public:
    static constexpr int patience = 30; ///< seconds

    FileLock() = default;
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /** Is told once, in a sentence, whom it is waited for. */
    using Teller = std::function<void(const QString&)>;

    /**
     * Waits until the lock is held.
     * @param path    the data file, which need not be there yet
     * @param seconds how long to wait at most
     * @return the problem when it could not be had
     */
    std::optional<Base::Problem> acquire(const QString& path, const Teller& tell,
                                         int seconds = patience);
    /** Takes the lock if nobody holds it and a lock file can be made. */
    bool tryToAcquire(const QString& path);
    void release();

    /** Where the lock for that data file is. */
    static QString lockFileOf(const QString& path);

private:
    bool tryToLock();
    bool lockFile();
    qint64 holder() const;

    QString m_lockFile;
    int m_descriptor = -1;
    std::optional<Base::DeferredEnd> m_deferredEnd;
};

} // namespace Uicov::Store
