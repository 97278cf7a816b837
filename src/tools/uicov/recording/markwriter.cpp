// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/markwriter.h"

#include "recording/framedecoder.h"
#include "recording/recordingreader.h"
#include "recordingformat/foreignappend.h"
#include "recordingformat/frames.h"

#include <cerrno>
#include <chrono>
#include <csignal>

namespace Uicov::Recording {

using RecordingFormat::FrameType;

namespace {

/** What the recording's process says of itself; empty when it says nothing. */
ProcessInfo processOf(RecordingReader& reader) {
    Frame frame;
    if (reader.open() || !reader.next(frame) || frame.type != FrameType::Process) {
        return {};
    }
    return decodeProcess(frame.body).value_or(ProcessInfo());
}

QString valueOf(const ProcessInfo& info, const char* key) {
    return info.value(QLatin1String(key));
}

bool isAlive(int process) {
    return process > 0 && (::kill(process, 0) == 0 || errno == EPERM);
}

/** Microseconds since the recording was opened; 0 where nobody knows when that was. */
quint64 timeIn(const ProcessInfo& info) {
    bool isKnown = false;
    const qint64 start = valueOf(info, RecordingFormat::Key::clock).toLongLong(&isKnown);
    const auto now = std::chrono::duration_cast<std::chrono::microseconds>(
                         std::chrono::steady_clock::now().time_since_epoch())
                         .count();
    return isKnown && now > start ? static_cast<quint64>(now - start) : 0;
}

} // namespace

bool appendMark(const QString& recording, const QString& name) {
    RecordingReader reader(recording);
    const ProcessInfo info = processOf(reader);
    if (!isAlive(valueOf(info, RecordingFormat::Key::pid).toInt())) {
        return false;
    }
    return RecordingFormat::appendFromOtherProcess(recording, reader.version(),
                                                   RecordingFormat::markFrame(timeIn(info), name));
}

} // namespace Uicov::Recording
