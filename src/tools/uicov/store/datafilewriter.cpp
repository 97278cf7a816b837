// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/datafilewriter.h"

#include "recording/recordingreader.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace Uicov::Store {

using Base::Message;
using Base::Problem;

namespace {

/** Beside the file, so that it can take its place in one step. */
QString partOf(const QString& path) {
    const QFileInfo info(path);
    for (int i = 1;; ++i) {
        QString name = QStringLiteral("%1/.%2.part-%3-%4")
                           .arg(info.absolutePath(), info.fileName())
                           .arg(::getpid())
                           .arg(i);
        if (!QFileInfo::exists(name)) {
            return name;
        }
    }
}

bool syncToDisk(const QString& path) {
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    const bool isSynced = descriptor >= 0 && ::fsync(descriptor) == 0;
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    return isSynced;
}

} // namespace

DataFileWriter::~DataFileWriter() {
    if (!m_part.isEmpty()) {
        QFile::remove(m_part);
        QFile::remove(m_part + QStringLiteral("-journal"));
    }
}

std::optional<Problem> DataFileWriter::checkOutput(const QString& path) {
    const QFileInfo info(path);
    if (info.isDir()) {
        return Problem{Message::OutputNotWritable,
                       path + QStringLiteral(": is a folder; name a file with -o")};
    }
    if (!info.exists()) {
        return std::nullopt;
    }
    if (info.size() > 0 && !DataFile::looksLikeDataFile(path)) {
        const bool isRecording = Recording::RecordingReader::looksLikeRecording(path);
        return Problem{Message::OutputForeign,
                       path +
                           (isRecording ? QStringLiteral(": is a recording and not overwritten")
                                        : QStringLiteral(": is no data file and not overwritten")) +
                           QStringLiteral("; choose another name with -o or remove it")};
    }
    DataFile file;
    if (info.size() == 0) {
        return std::nullopt;
    }
    if (auto problem = file.open(path, Sql::Access::Read)) {
        return Problem{Message::OutputForeign,
                       problem->text + QStringLiteral(" (it is not overwritten)")};
    }
    return std::nullopt;
}

std::optional<Problem> DataFileWriter::open(const QString& path, Mode mode) {
    m_path = path;
    m_part.clear();
    if (auto problem = checkOutput(path)) {
        return problem;
    }
    const QFileInfo info(path);
    if (mode == Mode::Append && info.exists() && info.size() > 0) {
        return m_file.open(path, Sql::Access::Write);
    }
    const QString part = partOf(path);
    auto problem = m_file.create(part);
    if (problem) {
        problem->text.replace(part, path);
        if (problem->message == Message::OutputNotWritable) {
            return problem; // nothing was made
        }
    }
    m_part = part;
    return problem;
}

std::optional<Problem> DataFileWriter::commit() {
    if (auto problem = m_file.commit()) {
        if (!m_part.isEmpty()) {
            problem->text.replace(m_part, m_path);
        }
        return problem;
    }
    if (m_part.isEmpty()) {
        return std::nullopt;
    }
    // A link that stands there stays, and what it leads to is replaced.
    const QFileInfo info(m_path);
    const QString target = info.isSymLink() ? info.symLinkTarget() : m_path;
    if (!syncToDisk(m_part) || std::rename(QFile::encodeName(m_part).constData(),
                                           QFile::encodeName(target).constData()) != 0) {
        return Problem{Message::OutputNotWritable,
                       m_path + QStringLiteral(": cannot be written: ") + qt_error_string(errno) +
                           QStringLiteral("; choose another place with -o")};
    }
    m_part.clear();
    return std::nullopt;
}

} // namespace Uicov::Store
