// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "vorskhook/owningprocess.h"

#include <vorsk/global.h>

#include <QByteArray>
#include <QString>

#include <sys/types.h>

namespace VorskHost {

/**
 * The file under a recording: made new and private, appended to, never overwritten. It belongs to
 * the process that made it; a child made by fork() can neither write to it nor end it. Appends with
 * write(2); RecordingMapping appends without.
 *
 * A foreign program may close our descriptor and open a file of its own under the same number.
 * Before each write the descriptor is therefore checked to be still the file that was made here.
 */
class VORSK_HOST_EXPORT RecordingFile {
public:
    using WriteFunction = ssize_t (*)(int, const void*, size_t);

    RecordingFile() = default;
    ~RecordingFile();
    Q_DISABLE_COPY(RecordingFile)

    /**
     * Makes the file at path or, when something of that name exists, at `<stem>-<pid>.uirec`
     * beside it (then `-2`, `-3`, ... behind the pid). False when it cannot be made.
     */
    bool create(const QString& path);

    /**
     * Appends all bytes. On failure the file is cut back to the length that it had before and
     * closed, and errorString() says why.
     */
    bool append(const QByteArray& bytes);

    /**
     * Makes the file at least that long, with zeros at its end that have their place on the disk
     * already. False when there is no room, and errorString() says why; the file stays open.
     */
    bool allocate(qint64 size);
    /** From now on what is written goes where it is told to, not to the end. For a file that others
     * append to by another rule. */
    void stopAppending();
    /** Writes zeros from one place to another, as far as it goes. For a file that has that room and
     * does not append. */
    void fillWithZeros(qint64 from, qint64 to);
    /** Cuts a longer file to that length, unless the application has closed it. */
    void truncate(qint64 size);
    /** False when the application has closed our descriptor. */
    bool isStillOurs() const;
    /** Does without the descriptor, which somebody else has by now. */
    void abandon() { m_descriptor = -1; }
    /** -1 when the file is closed. */
    int descriptor() const { return m_descriptor; }

    void close();

    /** True in the process that made the file, until the file is closed. */
    bool isOpen() const;
    /** The path that was chosen; stays known when the file is closed. */
    QString path() const { return m_path; }
    /** Bytes that were written here; others may have appended marks. */
    qint64 size() const { return m_size; }
    QString errorString() const { return m_error; }

    /** For tests: what is called in place of write(2). */
    void setWriteFunction(WriteFunction function) { m_write = function; }
    /** Whether the file is kept with nothing but write(2) and fstat(2), as it is where the system
     * calls are filtered. */
    bool needsLeast() const { return m_needsLeast; }

private:
    int writeAll(const char* data, size_t length, size_t& done);
    bool cutBack(off_t length);
    bool hasSizeLimit() const;

    int m_descriptor = -1;
    OwningProcess m_owner;
    dev_t m_device = 0;
    ino_t m_inode = 0;
    qint64 m_size = 0;
    QString m_path;
    QString m_error;
    WriteFunction m_write = nullptr;
    bool m_needsLeast = false;
    /** As it was when the file was made. */
    bool m_hadSizeLimit = false;
};

} // namespace VorskHost
