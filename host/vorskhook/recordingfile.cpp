// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskhook/recordingfile.h"

#include "recordingformat/processname.h"
#include "vorskhook/signalguard.h"
#include "vorskhook/systemcallfilter.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace VorskHost {

namespace {

constexpr int highestOrdinal = 1000;

int createExclusively(const QString& path) {
    int descriptor = -1;
    do {
        descriptor = ::open(QFile::encodeName(path).constData(),
                            O_RDWR | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC | O_NOFOLLOW, 0600);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

/** The path number n to try: the one asked for, then names with the process in them. */
QString candidate(const QString& path, int ordinal) {
    return ordinal == 0 ? path : RecordingFormat::pathForProcess(path, ::getpid(), ordinal);
}

bool isFileSizeLimited() {
    rlimit limit{};
    return getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
}

/**
 * While it lives, what exceeds the file size limit fails instead of ending the application. A look
 * at the limit costs less than blocking the signal, and where there is none, as is usual, is all.
 */
class FileSizeGuard {
public:
    explicit FileSizeGuard(bool isLimited) {
        if (isLimited) {
            m_guard.emplace(SIGXFSZ);
        }
    }

private:
    std::optional<SignalGuard> m_guard;
};

} // namespace

RecordingFile::~RecordingFile() {
    close();
}

bool RecordingFile::create(const QString& path) {
    close();
    m_path.clear();
    m_error.clear();
    m_size = 0;
    for (int ordinal = 0; m_descriptor < 0; ++ordinal) {
        const QString name = candidate(path, ordinal);
        m_descriptor = createExclusively(name);
        if (m_descriptor >= 0) {
            m_path = name;
        } else if (errno != EEXIST || ordinal == highestOrdinal) {
            m_error = qt_error_string(errno);
            return false;
        }
    }
    m_owner.claim();
    m_needsLeast = areSystemCallsFiltered();
    m_hadSizeLimit = isFileSizeLimited();
    struct stat status {};
    ::fstat(m_descriptor, &status);
    m_device = status.st_dev;
    m_inode = status.st_ino;
    return true;
}

bool RecordingFile::append(const QByteArray& bytes) {
    if (!isOpen()) {
        return false;
    }
    if (!isStillOurs()) {
        m_error = QStringLiteral("its file was closed by the application");
        // The number may belong to a file of the application by now.
        m_descriptor = -1;
        return false;
    }
    size_t written = 0;
    const int error = writeAll(bytes.constData(), static_cast<size_t>(bytes.size()), written);
    if (error == 0) {
        m_size += bytes.size();
        return true;
    }
    m_error = qt_error_string(error);
    if (written > 0 && !cutBack(static_cast<off_t>(written))) {
        m_error += QStringLiteral("; the last frame is torn");
    }
    close();
    return false;
}

/** Takes off the file's end what the last write left there, and no more: others append marks. What
 * a cut that fails leaves behind is a torn last frame, which readers expect. */
bool RecordingFile::cutBack(off_t length) {
    if (m_needsLeast) {
        return false;
    }
    const off_t end = ::lseek(m_descriptor, 0, SEEK_END);
    return end >= length && ::ftruncate(m_descriptor, end - length) == 0;
}

bool RecordingFile::allocate(qint64 size) {
    const FileSizeGuard guard(hasSizeLimit());
    int result = 0;
    do {
        result = ::fallocate(m_descriptor, 0, 0, static_cast<off_t>(size));
    } while (result != 0 && errno == EINTR);
    if (result != 0) {
        m_error = qt_error_string(errno);
    }
    return result == 0;
}

void RecordingFile::stopAppending() {
    const int flags = ::fcntl(m_descriptor, F_GETFL);
    if (flags >= 0) {
        ::fcntl(m_descriptor, F_SETFL, flags & ~O_APPEND);
    }
}

void RecordingFile::fillWithZeros(qint64 from, qint64 to) {
    // One call for many pages; the same few bytes for each of them.
    constexpr std::size_t partSize = std::size_t{16} * 1024;
    constexpr std::size_t partsAtOnce = 16;
    static char zeros[partSize];
    const FileSizeGuard guard(hasSizeLimit());
    while (from < to) {
        std::array<iovec, partsAtOnce> parts{};
        auto left = static_cast<std::size_t>(to - from);
        int count = 0;
        for (; left > 0 && count < static_cast<int>(partsAtOnce); ++count) {
            parts[static_cast<std::size_t>(count)] = {zeros, std::min(left, partSize)};
            left -= std::min(left, partSize);
        }
        const ssize_t written =
            ::pwritev(m_descriptor, parts.data(), count, static_cast<off_t>(from));
        if (written <= 0) {
            return;
        }
        from += written;
    }
}

void RecordingFile::truncate(qint64 size) {
    struct stat status {};
    if (isOpen() && isStillOurs() && ::fstat(m_descriptor, &status) == 0 &&
        status.st_size > static_cast<off_t>(size)) {
        // Zeros that stay at the end do no harm.
        static_cast<void>(::ftruncate(m_descriptor, static_cast<off_t>(size)));
    }
}

void RecordingFile::close() {
    if (m_descriptor >= 0 && isStillOurs()) {
        ::close(m_descriptor);
    }
    m_descriptor = -1;
}

bool RecordingFile::isOpen() const {
    return m_descriptor >= 0 && m_owner.isThis();
}

bool RecordingFile::hasSizeLimit() const {
    return m_needsLeast ? m_hadSizeLimit : isFileSizeLimited();
}

bool RecordingFile::isStillOurs() const {
    struct stat status {};
    return ::fstat(m_descriptor, &status) == 0 && status.st_dev == m_device &&
           status.st_ino == m_inode;
}

/** Zero, or the error number that stopped it. */
int RecordingFile::writeAll(const char* data, size_t length, size_t& done) {
    const FileSizeGuard guard(hasSizeLimit());
    const WriteFunction function = m_write != nullptr ? m_write : ::write;
    while (length > 0) {
        const ssize_t written = function(m_descriptor, data, length);
        if (written > 0) {
            data += written;
            length -= static_cast<size_t>(written);
            done += static_cast<size_t>(written);
        } else if (written == 0) {
            return ENOSPC;
        } else if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

} // namespace VorskHost
