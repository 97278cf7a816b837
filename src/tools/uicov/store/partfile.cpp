// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/partfile.h"

#include "store/datafilepath.h"
#include "store/leftovers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Uicov::Store {

using Base::Message;
using Base::Problem;

namespace {

/** Closed with this. */
struct Descriptor {
    Descriptor(const QString& path, int flags, mode_t mode = 0)
        : number(::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, mode)) {}
    ~Descriptor() {
        if (number >= 0) {
            const int error = errno;
            ::close(number);
            errno = error;
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number;
};

bool syncToDisk(const QString& path) {
    const Descriptor file(path, O_RDONLY);
    return file.number >= 0 && ::fsync(file.number) == 0;
}

/** Shares the blocks where the file system can, so that it costs the same for any size. */
bool copyBytes(int from, int to, qint64 size) {
    if (::ioctl(to, FICLONE, from) == 0) {
        return true;
    }
    for (qint64 left = size; left > 0;) {
        const ssize_t count = ::sendfile(to, from, nullptr, static_cast<size_t>(left));
        if (count <= 0) {
            errno = count == 0 ? EIO : errno; // cut while it was copied
            return false;
        }
        left -= count;
    }
    return true;
}

} // namespace

PartFile::PartFile(const QString& path)
    : m_dataFile(resolved(path))
    , m_name(path) {
    const QFileInfo info(m_dataFile);
    m_path = QStringLiteral("%1/.%2.part").arg(info.absolutePath(), info.fileName());
    removeLeftovers(path);
}

PartFile::~PartFile() {
    if (!m_path.isEmpty()) {
        QFile::remove(m_path);
    }
}

bool PartFile::isName(const QString& name) {
    return name.startsWith(QLatin1Char('.')) && name.endsWith(QLatin1String(".part"));
}

void PartFile::removeLeftovers(const QString& path) {
    const QFileInfo info(resolved(path));
    const QString start = QStringLiteral(".%1.part").arg(info.fileName());
    // Earlier versions gave each process a name of its own, and let SQLite keep a journal.
    static const QRegularExpression end(QStringLiteral("^(-\\d+-\\d+)?(-journal)?$"));
    QDir folder = info.absoluteDir();
    const QStringList names = folder.entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& name : names) {
        if (name.startsWith(start) && end.match(name.mid(start.size())).hasMatch()) {
            folder.remove(name);
        }
    }
}

QString PartFile::reasonOfFailedWrite(const QString& path) {
    constexpr off_t muchMore =
        1024 * 1024; // SQLite does not write a file from its start to its end
    const Descriptor file(path, O_WRONLY);
    struct stat status {};
    const bool isOpen = file.number >= 0 && ::fstat(file.number, &status) == 0;
    const int error = isOpen ? ::posix_fallocate(file.number, status.st_size, muchMore) : errno;
    return qt_error_string(error == 0 ? EIO : error);
}

Problem PartFile::failure() const {
    return {Message::OutputNotWritable, m_name + QStringLiteral(": cannot be written: ") +
                                            qt_error_string(errno) +
                                            QStringLiteral("; free some space on its disk, or "
                                                           "choose another place with -o")};
}

std::optional<Problem> PartFile::copyDataFile() {
    const Descriptor from(m_dataFile, O_RDONLY);
    struct stat status {};
    if (from.number < 0 || ::fstat(from.number, &status) != 0) {
        return failure();
    }
    const Descriptor to(m_path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0600);
    if (to.number < 0 || !copyBytes(from.number, to.number, status.st_size)) {
        return failure();
    }
    // A group that the user is not in cannot be given; the file is then the user's own group's.
    const bool hasGroup = ::fchown(to.number, static_cast<uid_t>(-1), status.st_gid) == 0;
    constexpr mode_t permissions = 0777;
    constexpr mode_t ofOthers = 0070;
    ::fchmod(to.number, status.st_mode & (hasGroup ? permissions : permissions & ~ofOthers));
    return std::nullopt;
}

std::optional<Problem> PartFile::takePlace() {
    if (!syncToDisk(m_path)) {
        return failure();
    }
    removeJournals(m_dataFile);
    if (std::rename(QFile::encodeName(m_path).constData(),
                    QFile::encodeName(m_dataFile).constData()) != 0) {
        return failure();
    }
    m_path.clear();
    syncToDisk(QFileInfo(m_dataFile).absolutePath()); // the new name; the content is safe already
    return std::nullopt;
}

} // namespace Uicov::Store
