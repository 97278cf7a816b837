// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "launch/runfolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Uicov::Launch {

using Base::Message;
using Base::Problem;

namespace {

constexpr int idLength = 8;

QString infoFile(const QString& folder) {
    return folder + QStringLiteral("/run.json");
}

QString lockFile(const QString& folder) {
    return folder + QStringLiteral("/lock");
}

QString nameStart(const QString& dataFile) {
    return QFileInfo(dataFile).fileName() + QStringLiteral(".run-");
}

Problem notMade(const QString& path, const QString& error) {
    return {Message::OutputNotWritable,
            path + QStringLiteral(": the recording cannot be made there: ") + error +
                QStringLiteral("; choose another place with -o")};
}

/** True when somebody holds the folder's lock. */
bool isLocked(const QString& folder) {
    const int descriptor =
        ::open(QFile::encodeName(lockFile(folder)).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor < 0) {
        return false;
    }
    const bool isFree = ::flock(descriptor, LOCK_SH | LOCK_NB) == 0;
    const bool isHeld = !isFree && errno == EWOULDBLOCK;
    ::close(descriptor);
    return isHeld;
}

/** What a folder says is done to other files, so nobody else may have put it there. */
bool isOurs(const QString& folder) {
    struct stat status {};
    return ::lstat(QFile::encodeName(folder).constData(), &status) == 0 &&
           S_ISDIR(status.st_mode) && status.st_uid == ::geteuid();
}

} // namespace

RunFolder::~RunFolder() {
    if (m_lock < 0) {
        return;
    }
    QFile::remove(infoFile(m_path));
    QFile::remove(lockFile(m_path));
    ::close(m_lock);
    if (!m_isKept) {
        QDir(m_path).removeRecursively();
    } else {
        QDir().rmdir(m_path); // goes if nothing is left in it
    }
}

std::optional<Problem> RunFolder::create(const QString& dataFile, const QString& session) {
    m_path = QFileInfo(dataFile).absolutePath() + QLatin1Char('/') + nameStart(dataFile) +
             session.left(idLength);
    constexpr mode_t ownerOnly = 0700;
    if (::mkdir(QFile::encodeName(m_path).constData(), ownerOnly) != 0) {
        return notMade(m_path, qt_error_string(errno));
    }
    m_lock = ::open(QFile::encodeName(lockFile(m_path)).constData(),
                    O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (m_lock < 0 || ::flock(m_lock, LOCK_EX) != 0) {
        const QString error = qt_error_string(errno);
        QDir(m_path).removeRecursively();
        return notMade(m_path, error);
    }
    return std::nullopt;
}

std::optional<Problem> RunFolder::announce(Info info) {
    const QJsonObject object{{QStringLiteral("session"), info.session},
                             {QStringLiteral("recording"), info.recording},
                             {QStringLiteral("options"), info.optionsFile},
                             {QStringLiteral("appends"), info.appends}};
    QSaveFile file(infoFile(m_path));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(object).toJson()) < 0 ||
        !file.commit()) {
        return notMade(m_path, file.errorString());
    }
    return std::nullopt;
}

std::optional<RunFolder::Info> RunFolder::running(const QString& folder) {
    QFile file(infoFile(folder));
    if (!isOurs(folder) || !isLocked(folder) || !file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    Info info{folder, object.value(QStringLiteral("session")).toString(),
              object.value(QStringLiteral("recording")).toString(),
              object.value(QStringLiteral("options")).toString(),
              object.value(QStringLiteral("appends")).toBool()};
    if (info.session.isEmpty() || info.recording.isEmpty()) {
        return std::nullopt;
    }
    return info;
}

bool RunFolder::hasRecordings(const QString& folder) {
    const QStringList ours{QFileInfo(infoFile(folder)).fileName(),
                           QFileInfo(lockFile(folder)).fileName()};
    const QStringList names =
        QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    return std::any_of(names.cbegin(), names.cend(),
                       [&ours](const QString& name) { return !ours.contains(name); });
}

QStringList RunFolder::foldersOf(const QString& dataFile, bool wantsRunning) {
    const QFileInfo info(dataFile);
    const QString folder = info.path();
    QStringList found;
    // Not by a filter of names: in one a file's name would be a pattern.
    const QStringList names = QDir(folder).entryList(
        QDir::Dirs | QDir::Hidden | QDir::NoSymLinks | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& name : names) {
        const QString path = folder == QLatin1String(".") ? name : folder + QLatin1Char('/') + name;
        if (name.startsWith(nameStart(dataFile)) && isLocked(path) == wantsRunning) {
            found.append(path);
        }
    }
    return found;
}

} // namespace Uicov::Launch
