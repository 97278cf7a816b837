// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/recordingreader.h"

#include "checksum/crc32.h"
#include "recording/bytecursor.h"

#include <QFileInfo>
#include <QThread>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace Uicov::Recording {

using Base::Message;
using Base::Problem;
using RecordingFormat::FrameType;

namespace {

/** Memory for a frame is taken in steps of this size, whatever length the file claims. */
constexpr qint64 readStep = 1024LL * 1024;

bool isKnown(quint8 type) {
    return type >= static_cast<quint8>(FrameType::Process) &&
           type <= static_cast<quint8>(FrameType::Loss);
}

/**
 * Whether nothing was written here: the length of a frame is never 0, and the file is preallocated
 * beyond its content, with zeros.
 */
bool isUnwritten(const QByteArray& frameHeader) {
    const int size = qMin(static_cast<int>(sizeof(quint32)), frameHeader.size());
    return std::all_of(frameHeader.begin(), frameHeader.begin() + size,
                       [](char byte) { return byte == 0; });
}

bool beginsLikeMagic(const QByteArray& bytes) {
    const auto size =
        qMin<std::size_t>(static_cast<std::size_t>(bytes.size()), sizeof RecordingFormat::magic);
    return std::memcmp(bytes.constData(), RecordingFormat::magic, size) == 0;
}

} // namespace

RecordingReader::RecordingReader(const QString& path)
    : m_file(path) {}

std::optional<Problem> RecordingReader::open() {
    const QString name = path();
    const QFileInfo info(name);
    if (!info.exists()) {
        return Problem{Message::InputMissing,
                       name + QStringLiteral(": there is no such file; check the path")};
    }
    if (info.isDir()) {
        return Problem{Message::InputUnreadable,
                       name + QStringLiteral(": is a folder; name the recordings in it")};
    }
    if (!m_file.open(QIODevice::ReadOnly)) {
        return Problem{Message::InputUnreadable,
                       name + QStringLiteral(": cannot be opened: ") + m_file.errorString()};
    }
    QByteArray header;
    const Read result = read(RecordingFormat::headerSize, header);
    if (result == Read::AtEnd) {
        return Problem{Message::InputEmpty,
                       name + QStringLiteral(": is empty; the application ended before it began to "
                                             "record")};
    }
    if (!beginsLikeMagic(header)) {
        return Problem{Message::InputForeign,
                       name +
                           QStringLiteral(": is not a recording; name a file that uicov run made")};
    }
    if (result == Read::Partial) {
        return Problem{Message::InputTorn,
                       name + QStringLiteral(": ends after %1 bytes, inside its header; nothing in "
                                             "it can be used")
                                  .arg(header.size())};
    }
    ByteCursor cursor(header.mid(static_cast<int>(sizeof RecordingFormat::magic)));
    const quint32 version = cursor.readUInt32();
    if (version > RecordingFormat::version) {
        return Problem{Message::InputNewer,
                       name + QStringLiteral(": has format version %1, and this uicov reads up to "
                                             "version %2; use a newer uicov")
                                  .arg(version)
                                  .arg(RecordingFormat::version)};
    }
    if (version == 0) {
        return Problem{Message::InputForeign,
                       name +
                           QStringLiteral(": has format version 0, which never existed; the file "
                                          "is damaged")};
    }
    m_version = version;
    if (version == RecordingFormat::sharedVersion && !readSharedHeader()) {
        return Problem{Message::InputTorn,
                       name + QStringLiteral(": ends after %1 bytes, inside its header; nothing in "
                                             "it can be used")
                                  .arg(m_position)};
    }
    return std::nullopt;
}

bool RecordingReader::readSharedHeader() {
    QByteArray rest;
    if (read(RecordingFormat::sharedHeaderSize - RecordingFormat::headerSize, rest) !=
        Read::Whole) {
        return false;
    }
    const auto number = [&rest](int offset) {
        return qFromBigEndian<qint64>(rest.constData() + offset - RecordingFormat::headerSize);
    };
    m_end = qMax<qint64>(number(RecordingFormat::endOffset), RecordingFormat::sharedHeaderSize);
    m_heldPlace = number(RecordingFormat::heldPlaceOffset);
    m_heldLength = number(RecordingFormat::heldLengthOffset);
    return true;
}

bool RecordingReader::next(Frame& frame) {
    QByteArray payload;
    while (!m_hasEnded && readPayload(payload)) {
        ByteCursor cursor(payload);
        const quint8 type = cursor.readUInt8();
        if (!isKnown(type)) {
            continue;
        }
        frame.type = static_cast<FrameType>(type);
        frame.time = cursor.readUInt64();
        frame.body = cursor.readRest();
        if (frame.type == FrameType::Mark) {
            return true; // another process may have been too late with it
        }
        m_countedMessages.reset();
        if (frame.type == FrameType::Message) {
            ++m_messages;
        } else if (frame.type == FrameType::End) {
            m_countedMessages = ByteCursor(frame.body).readUInt64();
        }
        return true;
    }
    return false;
}

RecordingReader::Read RecordingReader::read(qint64 size, QByteArray& bytes) {
    int count = 0;
    for (qint64 part = 1; count < size && part > 0;) {
        const qint64 step = qMin(readStep, size - count);
        bytes.resize(count + static_cast<int>(step));
        part = m_file.read(bytes.data() + count, step);
        count += static_cast<int>(qMax<qint64>(0, part));
    }
    bytes.resize(count);
    m_position += count;
    if (bytes.size() == size) {
        return Read::Whole;
    }
    return bytes.isEmpty() ? Read::AtEnd : Read::Partial;
}

bool RecordingReader::readPayload(QByteArray& payload) {
    QByteArray header;
    Read result = readFrameHeader(header);
    while (m_end > 0 && isUnwritten(header)) {
        if (skipHeld()) {
            result = readFrameHeader(header);
        } else if (m_frameStart >= m_end) {
            endByLastFrame();
            return false;
        } else if (!rereadFrameHeader(header)) {
            end(Ending::Kind::Torn);
            return false;
        }
    }
    if (result == Read::AtEnd) {
        endByLastFrame();
        return false;
    }
    if (result == Read::Partial) {
        end(Ending::Kind::Torn);
        return false;
    }
    ByteCursor cursor(header);
    const quint32 length = cursor.readUInt32();
    const quint32 checksum = cursor.readUInt32();
    if (length < static_cast<quint32>(RecordingFormat::payloadHeaderSize) ||
        length > RecordingFormat::maximumPayloadSize) {
        end(Ending::Kind::Damaged);
        return false;
    }
    if (read(length, payload) != Read::Whole) {
        end(Ending::Kind::Torn);
        return false;
    }
    if (Checksum::crc32(payload.constData(), static_cast<std::size_t>(payload.size())) !=
        checksum) {
        end(Ending::Kind::Damaged);
        return false;
    }
    return true;
}

RecordingReader::Read RecordingReader::readFrameHeader(QByteArray& header) {
    m_frameStart = m_position;
    return read(RecordingFormat::frameHeaderSize, header);
}

/** Steps over room that a process took and did not fill before it was killed. */
bool RecordingReader::skipHeld() {
    if (m_frameStart != m_heldPlace ||
        !RecordingFormat::canBeHeld(static_cast<quint64>(m_heldPlace),
                                    static_cast<quint64>(m_heldLength),
                                    static_cast<quint64>(m_end))) {
        return false;
    }
    m_heldPlace = 0;
    QByteArray rest;
    return read(m_heldLength - (m_position - m_frameStart), rest) == Read::Whole;
}

/** Whether a frame that was being written a moment ago is there by now. */
bool RecordingReader::rereadFrameHeader(QByteArray& header) {
    constexpr int attempts = 5;
    constexpr unsigned long pause = 1; // ms
    for (int attempt = 0; attempt < attempts && !m_file.isSequential(); ++attempt) {
        QThread::msleep(pause);
        m_file.seek(0); // what the file object has read ahead is old
        m_file.seek(m_frameStart);
        m_position = m_frameStart;
        if (readFrameHeader(header) == Read::Whole && !isUnwritten(header)) {
            return true;
        }
    }
    return false;
}

void RecordingReader::end(Ending::Kind kind) {
    m_hasEnded = true;
    m_ending.kind = kind;
    m_ending.soundBytes = m_frameStart;
    // Behind what was in a recording there may be room for more.
    m_ending.lostBytes =
        m_end > m_frameStart ? m_end - m_frameStart : m_position - m_frameStart + drain();
}

void RecordingReader::endByLastFrame() {
    m_hasEnded = true;
    m_ending.soundBytes = m_frameStart;
    if (!m_countedMessages) {
        m_ending.kind = Ending::Kind::NoEndFrame;
    } else {
        // Sound frames whose number does not fit: some were taken out or put in.
        m_ending.kind =
            *m_countedMessages == m_messages ? Ending::Kind::Complete : Ending::Kind::Damaged;
    }
}

qint64 RecordingReader::drain() {
    if (!m_file.isSequential()) {
        return qMax<qint64>(0, m_file.size() - m_position);
    }
    qint64 bytes = 0;
    for (QByteArray part = m_file.read(readStep); !part.isEmpty(); part = m_file.read(readStep)) {
        bytes += part.size();
    }
    return bytes;
}

bool RecordingReader::looksLikeRecording(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QByteArray start = file.read(static_cast<qint64>(sizeof RecordingFormat::magic));
    return start.size() == static_cast<int>(sizeof RecordingFormat::magic) &&
           beginsLikeMagic(start);
}

} // namespace Uicov::Recording
