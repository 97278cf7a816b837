// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordingformat/foreignappend.h"

#include "recordingformat/frames.h"
#include "recordingformat/sharedheader.h"

#include <QByteArray>
#include <QFile>
#include <QThread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <unistd.h>

namespace RecordingFormat {

namespace {

/** The header of the file, mapped for as long as this lives. */
class MappedHeader {
public:
    explicit MappedHeader(int descriptor)
        : m_memory(::mmap(nullptr, sharedHeaderSize, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor,
                          0)) {}
    ~MappedHeader() {
        if (isMapped()) {
            ::munmap(m_memory, sharedHeaderSize);
        }
    }
    Q_DISABLE_COPY(MappedHeader)

    bool isMapped() const { return m_memory != MAP_FAILED; }
    SharedHeader fields() const { return SharedHeader(m_memory); }

private:
    void* m_memory;
};

/**
 * Whether there is a frame. Waits a little before it says no: where a damaged header names a place
 * of the application as the held one, the application may be about to commit it.
 */
bool hasFrame(int descriptor, quint64 place) {
    constexpr int attempts = 20;
    quint32 length = 0;
    for (int attempt = 0; length == 0 && attempt < attempts; ++attempt) {
        if (attempt > 0) {
            QThread::msleep(1);
        }
        static_cast<void>(::pread(descriptor, &length, sizeof length, static_cast<off_t>(place)));
    }
    return length != 0;
}

/** Commits a filler frame where another process was killed between reserving and committing. */
bool fillHeldPlace(int descriptor, const SharedHeader& header) {
    const quint64 place = header.heldPlace();
    if (place == 0) {
        return true;
    }
    const quint64 length = header.heldLength();
    if (canBeHeld(place, length, header.end()) && !hasFrame(descriptor, place) &&
        !commit(descriptor, place, fillerFrame(length))) {
        return false;
    }
    header.releaseHeldPlace();
    return true;
}

bool appendLocked(int descriptor, const QByteArray& frame) {
    const MappedHeader mapped(descriptor);
    if (!mapped.isMapped()) {
        return false;
    }
    const SharedHeader header = mapped.fields();
    if (!fillHeldPlace(descriptor, header)) {
        return false;
    }
    const auto length = static_cast<quint64>(frame.size());
    quint64 place = header.end();
    do {
        header.hold(place, length);
    } while (!header.tryReserve(place, length));
    if (!commit(descriptor, place, frame)) {
        return false;
    }
    header.releaseHeldPlace();
    return true;
}

bool appendPlainly(const QString& path, const QByteArray& frame) {
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_APPEND | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor < 0) {
        return false;
    }
    const ssize_t written =
        ::write(descriptor, frame.constData(), static_cast<size_t>(frame.size()));
    ::close(descriptor);
    return written == frame.size();
}

bool appendShared(const QString& path, const QByteArray& frame) {
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor < 0) {
        return false;
    }
    // Closing the file gives the lock back.
    const bool isAppended = ::flock(descriptor, LOCK_EX) == 0 && appendLocked(descriptor, frame);
    ::close(descriptor);
    return isAppended;
}

} // namespace

bool appendFromOtherProcess(const QString& path, quint32 ofVersion, const QByteArray& frame) {
    return ofVersion == plainVersion ? appendPlainly(path, frame) : appendShared(path, frame);
}

} // namespace RecordingFormat
