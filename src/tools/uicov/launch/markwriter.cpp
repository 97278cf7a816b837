#include "launch/markwriter.h"

#include "recording/framedecoder.h"
#include "recording/recordingreader.h"

#include <QFile>
#include <QtEndian>

#include <cerrno>
#include <chrono>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

namespace Uicov::Launch {

using RecordingFormat::FrameType;

namespace {

template <class Integer>
QByteArray bigEndian(Integer value) {
    QByteArray bytes(static_cast<int>(sizeof value), Qt::Uninitialized);
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray markFrame(quint64 time, const QString& name) {
    const QByteArray text = name.toUtf8();
    QByteArray payload;
    payload.append(static_cast<char>(FrameType::Mark));
    payload += bigEndian(time) + bigEndian(static_cast<quint32>(text.size())) + text;
    const auto checksum = crc32(0, reinterpret_cast<const Bytef*>(payload.constData()),
                                static_cast<uInt>(payload.size()));
    return bigEndian(static_cast<quint32>(payload.size())) +
           bigEndian(static_cast<quint32>(checksum)) + payload;
}

/** What the recording's process says of itself; empty when it says nothing. */
Recording::ProcessInfo processOf(const QString& recording) {
    Recording::RecordingReader reader(recording);
    Recording::Frame frame;
    if (reader.open() || !reader.next(frame) || frame.type != FrameType::Process) {
        return {};
    }
    return Recording::FrameDecoder::process(frame.body).value_or(Recording::ProcessInfo());
}

QString valueOf(const Recording::ProcessInfo& info, const char* key) {
    return info.value(QLatin1String(key));
}

bool isAlive(int process) {
    return process > 0 && (::kill(process, 0) == 0 || errno == EPERM);
}

/** Microseconds since the recording was opened; 0 where nobody knows when that was. */
quint64 timeIn(const Recording::ProcessInfo& info) {
    bool isKnown = false;
    const qint64 start = valueOf(info, RecordingFormat::Key::clock).toLongLong(&isKnown);
    const auto now = std::chrono::duration_cast<std::chrono::microseconds>(
                         std::chrono::steady_clock::now().time_since_epoch())
                         .count();
    return isKnown && now > start ? static_cast<quint64>(now - start) : 0;
}

} // namespace

bool MarkWriter::append(const QString& recording, const QString& name) {
    const Recording::ProcessInfo info = processOf(recording);
    if (!isAlive(valueOf(info, RecordingFormat::Key::pid).toInt())) {
        return false;
    }
    const int descriptor = ::open(QFile::encodeName(recording).constData(),
                                  O_WRONLY | O_APPEND | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor < 0) {
        return false;
    }
    const QByteArray frame = markFrame(timeIn(info), name);
    const ssize_t written =
        ::write(descriptor, frame.constData(), static_cast<size_t>(frame.size()));
    ::close(descriptor);
    return written == frame.size();
}

} // namespace Uicov::Launch
