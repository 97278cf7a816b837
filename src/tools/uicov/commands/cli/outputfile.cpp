// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/cli/outputfile.h"

#include "recording/recordingreader.h"
#include "store/datafile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <csignal>
#include <cstdio>

namespace Uicov::Commands::Cli {

using Base::Message;
using Base::Problem;

OutputFile::OutputFile(const QString& path)
    : m_path(path) {}

OutputFile::~OutputFile() = default;

bool OutputFile::isStandardOutput() const {
    return m_path == QLatin1String("-");
}

std::optional<Problem> OutputFile::open() {
    const QFileInfo info(m_path);
    bool isOpen = false;
    if (isStandardOutput()) {
        auto file = std::make_unique<QFile>();
        isOpen = file->open(stdout, QIODevice::WriteOnly);
        m_file = std::move(file);
    } else if (info.isFile() && (Recording::RecordingReader::looksLikeRecording(m_path) ||
                                 Store::DataFile::looksLikeDataFile(m_path))) {
        return Problem{Message::OutputNotWritable,
                       m_path + QStringLiteral(": is a recording or data file and is not "
                                               "overwritten; choose another name with -o")};
    } else if (info.exists() && !info.isFile()) {
        // A device or pipe cannot be replaced by a finished file. A reader of the pipe that stops
        // is told as any other failure; only standard output ends in silence, as people expect
        // there.
        static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
        m_file = std::make_unique<QFile>(m_path);
        isOpen = m_file->open(QIODevice::WriteOnly);
    } else {
        m_file = std::make_unique<QSaveFile>(m_path);
        isOpen = m_file->open(QIODevice::WriteOnly);
        if (isOpen && m_readers) {
            isOpen = m_file->setPermissions(m_file->permissions() &
                                            (*m_readers | QFile::ReadOwner | QFile::WriteOwner));
        }
    }
    if (!isOpen) {
        return Problem{Message::OutputNotWritable,
                       m_path + QStringLiteral(": cannot be written: ") + m_file->errorString() +
                           QStringLiteral("; choose another with -o")};
    }
    return std::nullopt;
}

void OutputFile::writeBytes(const QByteArray& bytes) {
    if (!m_hasFailed && m_file->write(bytes) != bytes.size()) {
        m_hasFailed = true;
    }
}

std::optional<Problem> OutputFile::close() {
    bool isWhole = !m_hasFailed && m_file->flush();
    QString reason = m_file->errorString();
    if (auto* const file = qobject_cast<QSaveFile*>(m_file.get())) {
        if (!isWhole) {
            file->cancelWriting();
        }
        isWhole = file->commit() && isWhole;
        reason = isWhole || m_hasFailed ? reason : file->errorString();
    }
    m_file.reset();
    if (isWhole) {
        return std::nullopt;
    }
    const QString name = isStandardOutput() ? QStringLiteral("standard output") : m_path;
    return Problem{Message::OutputNotWritable, name +
                                                   QStringLiteral(": not everything could be "
                                                                  "written: ") +
                                                   reason};
}

} // namespace Uicov::Commands::Cli
