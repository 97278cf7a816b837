// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recordingformat/sharedheader.h"
#include "vorskhook/recordingfile.h"

#include <QByteArray>
#include <QString>

#include <cstddef>

namespace VorskHost {

/**
 * Appends to a recording through memory that it shares with the file: what was appended outlives
 * the process, as with write(2), and costs no system call. Room is allocated on the disk in steps
 * before it is used, so that a full disk is an error of that step. Other processes append Marks
 * meanwhile (see sharedheader.h). Owned by RecordingWriter, which also owns the file.
 */
class VORSK_HOST_EXPORT RecordingMapping {
public:
    /** Bytes by which the file grows. */
    static constexpr qint64 step = 256LL * 1024;

    RecordingMapping() = default;
    ~RecordingMapping();
    Q_DISABLE_COPY(RecordingMapping)

    /**
     * Takes a file that was just made and puts the header into it. False, with the file as empty
     * as it was, where its file system does not promise what this needs.
     * @param maximumSize bytes that the file may have; 0 without a limit
     */
    bool open(RecordingFile& file, qint64 maximumSize);
    bool isOpen() const { return m_file != nullptr; }

    /** Appends whole frames. On failure what was there before stays, and the file is closed. */
    bool append(const QByteArray& frames);

    /** Cuts off what was allocated and not used, and closes the file. */
    void close();

    /** Bytes in the recording, those of other processes with them. */
    qint64 size() const;
    QString errorString() const { return m_error; }

private:
    RecordingFormat::SharedHeader header() const;
    bool reserve(quint64& place, std::size_t length);
    bool prepare(quint64 place, std::size_t length);
    bool allocate(qint64 needed);
    void fill(qint64 from, qint64 to) const;
    bool mapRegion(std::size_t windowSize, quint64 windowPlace);
    bool mapWindow(quint64 place);
    bool mapFile(char* memory, std::size_t size, quint64 place);
    void fail(const QString& error);
    void release();

    RecordingFile* m_file = nullptr;
    qint64 m_maximumSize = 0;
    /** Bytes of the file that have their place on the disk. */
    qint64 m_allocated = 0;
    /** The file's first page, and behind it the window: the part that is appended to. */
    char* m_region = nullptr;
    std::size_t m_windowSize = 0;
    quint64 m_windowPlace = 0;
    /** Where the last append ended; the end never lies before it. */
    quint64 m_lastEnd = 0;
    QString m_error;
};

} // namespace VorskHost
