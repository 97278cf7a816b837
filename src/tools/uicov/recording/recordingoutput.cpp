// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/recordingoutput.h"

#include "recording/framedecoder.h"
#include "recording/recordingreader.h"
#include "recordingformat/processname.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

namespace Uicov::Recording {

using Base::Message;
using Base::Problem;

namespace {

QString sessionOf(const QString& path) {
    RecordingReader reader(path);
    Frame frame;
    if (reader.open() || !reader.next(frame) || frame.type != RecordingFormat::FrameType::Process) {
        return {};
    }
    return decodeProcess(frame.body)
        .value_or(ProcessInfo())
        .value(QLatin1String(RecordingFormat::Key::session));
}

} // namespace

RecordingOutput::RecordingOutput(const QString& path)
    : m_path(path)
    , m_absolutePath(QFileInfo(path).absoluteFilePath()) {}

std::optional<Problem> RecordingOutput::check() const {
    const QFileInfo info(m_absolutePath);
    const QString folder = info.absolutePath();
    if (!QFileInfo(folder).isDir()) {
        return Problem{Message::OutputNotWritable,
                       m_path + QStringLiteral(": cannot be written: there is no folder ") +
                           folder + QStringLiteral("; make it or choose another with -o")};
    }
    // Tried, not asked for: permissions are not all that can be in the way.
    QTemporaryFile trial(folder + QStringLiteral("/.uicov-XXXXXX"));
    if (!trial.open()) {
        return Problem{Message::OutputNotWritable,
                       m_path + QStringLiteral(": cannot be written: no file can be made in ") +
                           folder + QStringLiteral(" (") + trial.errorString() +
                           QStringLiteral("); choose another with -o")};
    }
    const bool isThere = info.exists() || info.isSymLink();
    const bool mayGo =
        info.isFile() && (info.size() == 0 || RecordingReader::looksLikeRecording(m_absolutePath));
    if (isThere && !mayGo) {
        return Problem{Message::OutputNotARecording,
                       m_path +
                           QStringLiteral(": is there already and is not a recording, so it is "
                                          "not replaced; choose another name with -o")};
    }
    return std::nullopt;
}

std::optional<Problem> RecordingOutput::makeRoom() const {
    QFile file(m_absolutePath);
    if (file.exists() && !file.remove()) {
        return Problem{Message::OutputNotWritable,
                       m_path + QStringLiteral(": the earlier recording cannot be removed: ") +
                           file.errorString() + QStringLiteral("; choose another name with -o")};
    }
    return std::nullopt;
}

bool RecordingOutput::hasLostItsFolder() const {
    return !QFileInfo(QFileInfo(m_absolutePath).absolutePath()).isDir();
}

bool RecordingOutput::isThere() const {
    return QFileInfo::exists(m_absolutePath);
}

QStringList RecordingOutput::recordingsOf(const QString& session) const {
    QStringList paths;
    if (sessionOf(m_absolutePath) == session) {
        paths.append(m_path);
    }
    const QFileInfo info(m_absolutePath);
    const QStringList names = info.absoluteDir().entryList(QDir::Files | QDir::Hidden, QDir::Name);
    for (const QString& name : names) {
        const QString path = info.absolutePath() + QLatin1Char('/') + name;
        if (RecordingFormat::isNameForProcess(name, m_absolutePath) && sessionOf(path) == session) {
            paths.append(QFileInfo(m_path).isAbsolute() || m_path.contains(QLatin1Char('/'))
                             ? QFileInfo(m_path).path() + QLatin1Char('/') + name
                             : name);
        }
    }
    return paths;
}

} // namespace Uicov::Recording
