// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskhook/recordingmapping.h"

#include "recordingformat/frames.h"
#include "vorskhook/busguard.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <linux/magic.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace VorskHost {

namespace {

/** The least; one message may need more. */
constexpr std::size_t usualWindow = std::size_t{1024} * 1024;

/** No recording gets there; behind it sums would run over. */
constexpr quint64 furthestPlace = quint64{1} << 62;

std::size_t pageSize() {
    static const auto size = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    return size;
}

std::size_t wholePages(std::size_t bytes) {
    return (bytes + pageSize() - 1) / pageSize() * pageSize();
}

/** Where the page begins that the place is in. */
quint64 pageOf(quint64 place) {
    return place / pageSize() * pageSize();
}

/**
 * Where room that was allocated can be written to whatever happens on the rest of the disk. Not so
 * where each write takes new room (btrfs), where the disk is elsewhere, or where nobody knows.
 */
bool keepsAllocatedRoom(int descriptor) {
#ifndef XFS_SUPER_MAGIC
    constexpr long XFS_SUPER_MAGIC = 0x58465342;
#endif
    constexpr std::array<unsigned long, 5> known = {
        EXT4_SUPER_MAGIC, XFS_SUPER_MAGIC, F2FS_SUPER_MAGIC, TMPFS_MAGIC, OVERLAYFS_SUPER_MAGIC};
    struct statfs status {};
    return ::fstatfs(descriptor, &status) == 0 &&
           std::find(known.begin(), known.end(),
                     static_cast<unsigned long>(status.f_type) & 0xFFFFFFFFUL) != known.end();
}

} // namespace

RecordingMapping::~RecordingMapping() {
    release();
}

bool RecordingMapping::open(RecordingFile& file, qint64 maximumSize) {
    release();
    m_error.clear();
    m_lastEnd = 0;
    if (!__atomic_always_lock_free(sizeof(quint64), nullptr) ||
        !keepsAllocatedRoom(file.descriptor())) {
        return false;
    }
    m_file = &file;
    m_maximumSize = maximumSize;
    m_allocated = 0;
    const QByteArray start = RecordingFormat::fileHeader(RecordingFormat::sharedVersion);
    if (!allocate(start.size()) || !mapRegion(usualWindow, 0)) {
        release();
        file.truncate(0);
        return false;
    }
    std::memcpy(m_region, start.constData(), static_cast<std::size_t>(start.size()));
    m_lastEnd = static_cast<quint64>(start.size());
    m_file->stopAppending();
    fill(start.size(), m_allocated);
    return true;
}

bool RecordingMapping::append(const QByteArray& frames) {
    if (!isOpen() || !m_file->isOpen()) {
        return false;
    }
    if (frames.isEmpty()) {
        return true;
    }
    const auto length = static_cast<std::size_t>(frames.size());
    quint64 start = 0;
    if (!reserve(start, length)) {
        return false;
    }
    RecordingFormat::commit(m_region + pageSize() + (start - m_windowPlace), frames);
    m_lastEnd = start + length;
    if (BusGuard::wasHit()) {
        fail(QStringLiteral("somebody cut it short, or its medium failed"));
        return false;
    }
    return true;
}

void RecordingMapping::close() {
    if (!isOpen()) {
        return;
    }
    const qint64 end = size();
    RecordingFile* const file = m_file;
    const bool isSound = !BusGuard::wasHit();
    release();
    if (isSound) {
        file->truncate(end);
    }
    file->close();
}

qint64 RecordingMapping::size() const {
    return static_cast<qint64>(isOpen() ? std::max(header().end(), m_lastEnd) : m_lastEnd);
}

RecordingFormat::SharedHeader RecordingMapping::header() const {
    return RecordingFormat::SharedHeader(m_region);
}

/** Gives the place of so many bytes, with memory for them in the window. */
bool RecordingMapping::reserve(quint64& place, std::size_t length) {
    place = header().end();
    do {
        if (BusGuard::wasHit() || place < m_lastEnd || place > furthestPlace) {
            fail(QStringLiteral("somebody changed it"));
            return false;
        }
        if (!prepare(place, length)) {
            return false;
        }
        // The header is asked for anew: to prepare may have mapped it elsewhere.
    } while (!header().tryReserve(place, length));
    return true;
}

bool RecordingMapping::prepare(quint64 place, std::size_t length) {
    const quint64 end = place + length;
    const bool isAllocated = end <= static_cast<quint64>(m_allocated);
    const bool isMapped = place >= m_windowPlace && end - m_windowPlace <= m_windowSize;
    if (isAllocated && isMapped) {
        return true;
    }
    if (!m_file->isStillOurs()) {
        // The number may belong to a file of the application by now.
        m_file->abandon();
        fail(QStringLiteral("its file was closed by the application"));
        return false;
    }
    if (!isAllocated && !allocate(static_cast<qint64>(end))) {
        fail(m_file->errorString());
        return false;
    }
    if (!isMapped && !mapWindow(place)) {
        fail(qt_error_string(errno));
        return false;
    }
    if (end - m_windowPlace > m_windowSize && !mapRegion(length + pageSize(), place)) {
        fail(qt_error_string(errno));
        return false;
    }
    return true;
}

/** A whole step where there is room for it, else ever less, down to what is needed. */
bool RecordingMapping::allocate(qint64 needed) {
    for (qint64 spare = step;; spare /= 2) {
        qint64 size = needed + spare;
        if (m_maximumSize > 0) {
            size = std::max(needed, std::min(size, m_maximumSize));
        }
        if (m_file->allocate(size)) {
            if (m_region != nullptr) {
                fill(m_allocated, size);
            }
            m_allocated = size;
            return true;
        }
        if (spare == 0) {
            return false;
        }
    }
}

/**
 * Writes zeros to room that is only preallocated. Without that each page is allocated at the first
 * store to it, which takes four times as long. Under the lock that other processes append with:
 * what they have written lies before the end, and they write nothing while this does.
 */
void RecordingMapping::fill(qint64 from, qint64 to) const {
    if (::flock(m_file->descriptor(), LOCK_EX | LOCK_NB) != 0) {
        return;
    }
    const quint64 end = header().end();
    if (end < static_cast<quint64>(to)) {
        m_file->fillWithZeros(std::max(from, static_cast<qint64>(end)), to);
    }
    ::flock(m_file->descriptor(), LOCK_UN);
}

/** Memory for the header and a window of at least that size; without it the former one stays. */
bool RecordingMapping::mapRegion(std::size_t windowSize, quint64 windowPlace) {
    const std::size_t wholeSize = wholePages(windowSize);
    const std::size_t size = pageSize() + wholeSize;
    void* const memory =
        ::mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED) {
        return false;
    }
    auto* const region = static_cast<char*>(memory);
    if (!mapFile(region, pageSize(), 0) ||
        !mapFile(region + pageSize(), wholeSize, pageOf(windowPlace))) {
        ::munmap(region, size);
        return false;
    }
    if (m_region != nullptr) {
        ::munmap(m_region, pageSize() + m_windowSize);
    }
    m_region = region;
    m_windowSize = wholeSize;
    m_windowPlace = pageOf(windowPlace);
    BusGuard::watch(m_region, size);
    return true;
}

bool RecordingMapping::mapWindow(quint64 place) {
    m_windowPlace = pageOf(place);
    return mapFile(m_region + pageSize(), m_windowSize, m_windowPlace);
}

/** Puts that part of the file where memory was taken already. */
bool RecordingMapping::mapFile(char* memory, std::size_t size, quint64 place) {
    return ::mmap(memory, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED,
                  m_file->descriptor(), static_cast<off_t>(place)) != MAP_FAILED;
}

/** What is there stays; the file, if it still is ours, gets no longer than that. */
void RecordingMapping::fail(const QString& error) {
    m_error = error;
    close();
}

void RecordingMapping::release() {
    if (m_region != nullptr) {
        BusGuard::stopWatching();
        ::munmap(m_region, pageSize() + m_windowSize);
        m_region = nullptr;
    }
    m_file = nullptr;
}

} // namespace VorskHost
