// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/filelock.h"

#include "store/datafilepath.h"

#include <QElapsedTimer>
#include <QFile>

#include <cerrno>
#include <ctime>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Uicov::Store {

using Base::Message;
using Base::Problem;

namespace {

/** A lock is held for milliseconds as a rule; waiting for it is not worth a signal of its own. */
constexpr timespec betweenTries{0, 20 * 1000 * 1000};

bool isSameFile(int descriptor, const QString& path) {
    struct stat opened {};
    struct stat named {};
    return ::fstat(descriptor, &opened) == 0 &&
           ::stat(QFile::encodeName(path).constData(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

} // namespace

FileLock::~FileLock() {
    release();
}

QString FileLock::lockFileOf(const QString& path) {
    // Who comes by a link and who comes by the name want the same file.
    return resolved(path) + QStringLiteral(".lock");
}

std::optional<Problem> FileLock::acquire(const QString& path, const Teller& tell, int seconds) {
    m_lockFile = lockFileOf(path);
    constexpr qint64 milliseconds = 1000;
    QElapsedTimer timer;
    timer.start();
    bool hasTold = false;
    while (!tryToLock()) {
        if (errno != EWOULDBLOCK) {
            return Problem{Message::OutputNotWritable,
                           path + QStringLiteral(": cannot be locked: ") + qt_error_string(errno) +
                               QStringLiteral("; choose another place with -o")};
        }
        const qint64 process = holder();
        const QString who = process > 0 ? QStringLiteral("process %1").arg(process)
                                        : QStringLiteral("another process");
        if (timer.elapsed() >= seconds * milliseconds) {
            return Problem{Message::DataFileBusy,
                           path + QStringLiteral(": ") + who +
                               QStringLiteral(" is writing to it and did not end in %1 seconds; "
                                              "try again when it has")
                                   .arg(seconds)};
        }
        if (!hasTold) {
            hasTold = true;
            tell(QStringLiteral("waiting for ") + who + QStringLiteral(" to write to ") + path);
        }
        ::nanosleep(&betweenTries, nullptr);
    }
    return std::nullopt;
}

bool FileLock::tryToAcquire(const QString& path) {
    m_lockFile = lockFileOf(path);
    return tryToLock();
}

/** False with errno; EWOULDBLOCK when somebody else holds it. */
bool FileLock::tryToLock() {
    m_deferredEnd.emplace();
    if (lockFile()) {
        return true;
    }
    const int error = errno;
    m_deferredEnd.reset();
    errno = error;
    return false;
}

bool FileLock::lockFile() {
    const int descriptor = ::open(QFile::encodeName(m_lockFile).constData(),
                                  O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor < 0) {
        return false;
    }
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        const int error = errno;
        ::close(descriptor);
        errno = error;
        return false;
    }
    if (!isSameFile(descriptor, m_lockFile)) {
        // Its holder took the file away between our opening and locking it.
        ::close(descriptor);
        errno = EWOULDBLOCK;
        return false;
    }
    const QByteArray process = QByteArray::number(::getpid());
    // Told to those who wait and to nobody else, so that a failure does no harm.
    static_cast<void>(::ftruncate(descriptor, 0) == 0 &&
                      ::write(descriptor, process.constData(),
                              static_cast<size_t>(process.size())) == process.size());
    m_descriptor = descriptor;
    return true;
}

qint64 FileLock::holder() const {
    QFile file(m_lockFile);
    return file.open(QIODevice::ReadOnly) ? file.readLine().toLongLong() : 0;
}

void FileLock::release() {
    if (m_descriptor >= 0) {
        // While it is still locked: who locks it later sees that it is not the one with the name.
        QFile::remove(m_lockFile);
        ::close(m_descriptor);
        m_descriptor = -1;
        m_deferredEnd.reset();
    }
}

} // namespace Uicov::Store
