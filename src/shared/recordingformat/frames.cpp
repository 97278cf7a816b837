// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordingformat/frames.h"

#include "checksum/crc32.h"

#include <QDataStream>
#include <QVariant>
#include <QtEndian>

#include <cstring>
#include <limits>
#include <utility>

namespace RecordingFormat {

namespace {

template <typename Integer>
void appendInteger(QByteArray& bytes, Integer value) {
    char encoded[sizeof(Integer)];
    qToBigEndian(value, encoded);
    bytes.append(encoded, sizeof encoded);
}

void appendBytes(QByteArray& bytes, const QByteArray& value) {
    appendInteger(bytes, static_cast<quint32>(value.size()));
    bytes.append(value);
}

void appendText(QByteArray& bytes, const QString& text) {
    appendBytes(bytes, text.toUtf8());
}

/** In the form that arguments of no tag of their own have. */
QByteArray streamed(const QVariant& argument) {
    QByteArray encoded;
    QDataStream stream(&encoded, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_4_6);
    stream << argument;
    return encoded;
}

/** The bytes themselves: a variant gives them away only as a copy. */
const QByteArray& bytesOf(const QVariant& argument) {
    return *static_cast<const QByteArray*>(argument.constData());
}

/** How many bytes a Message frame takes for the argument. */
qint64 encodedSize(const QVariant& argument) {
    constexpr qint64 tagAndLength = sizeof(quint8) + sizeof(quint32);
    switch (argument.userType()) {
    case QMetaType::Int:
        return sizeof(quint8) + sizeof(qint32);
    case QMetaType::QByteArray:
        return tagAndLength + bytesOf(argument).size();
    default:
        return tagAndLength + streamed(argument).size();
    }
}

/** Where so many new bytes begin behind those that are there. Not inlined: compilers take the
 * memory for QByteArray's own header and warn. */
Q_NEVER_INLINE char* extend(QByteArray& bytes, int count) {
    const int start = bytes.size();
    bytes.resize(start + count);
    return bytes.data() + start;
}

/** Fills memory that is large enough, from its start on. */
class Filler {
public:
    explicit Filler(char* target)
        : m_target(target) {}

    template <typename Integer>
    void add(Integer value) {
        qToBigEndian(value, m_target);
        m_target += sizeof value;
    }

    void add(const QByteArray& bytes) {
        add(static_cast<quint32>(bytes.size()));
        std::memcpy(m_target, bytes.constData(), static_cast<size_t>(bytes.size()));
        m_target += bytes.size();
    }

    void add(const QVariant& argument) {
        switch (argument.userType()) {
        case QMetaType::Int:
            add(static_cast<quint8>(ArgumentTag::Integer));
            add(*static_cast<const qint32*>(argument.constData()));
            break;
        case QMetaType::QByteArray:
            add(static_cast<quint8>(ArgumentTag::Bytes));
            add(bytesOf(argument));
            break;
        default:
            add(static_cast<quint8>(ArgumentTag::Variant));
            add(streamed(argument));
        }
    }

private:
    char* m_target;
};

/** Fills in length and checksum of a frame whose payload is there. */
void seal(char* frame, quint32 length) {
    qToBigEndian(length, frame);
    qToBigEndian(Checksum::crc32(frame + frameHeaderSize, length), frame + sizeof length);
}

/** A frame with room for its length and checksum; the caller appends the body. */
QByteArray beginFrame(FrameType type, quint64 time, int bodySize) {
    QByteArray frame;
    frame.reserve(frameHeaderSize + payloadHeaderSize + bodySize);
    frame.resize(frameHeaderSize);
    appendInteger(frame, static_cast<quint8>(type));
    appendInteger(frame, time);
    return frame;
}

/** Fills in length and checksum; null when the frame is longer than a reader accepts. */
QByteArray endedFrame(QByteArray frame) {
    const auto length = static_cast<quint32>(frame.size() - frameHeaderSize);
    if (length > maximumPayloadSize) {
        return {};
    }
    seal(frame.data(), length);
    return frame;
}

} // namespace

QByteArray fileHeader(quint32 ofVersion) {
    QByteArray bytes(magic, sizeof magic);
    appendInteger(bytes, ofVersion);
    if (ofVersion == sharedVersion) {
        appendInteger(bytes, quint32{0});
        appendInteger(bytes, quint64{sharedHeaderSize});
        bytes.append(sharedHeaderSize - bytes.size(), '\0'); // no place is held
    }
    return bytes;
}

QByteArray processFrame(quint64 time, const ProcessInfo& info) {
    QByteArray frame = beginFrame(FrameType::Process, time, 0);
    appendInteger(frame, static_cast<quint32>(info.size()));
    for (const auto& entry : info) {
        appendText(frame, entry.first);
        appendText(frame, entry.second);
    }
    return endedFrame(std::move(frame));
}

QByteArray messageFrame(quint64 time, int channel, const QString& name,
                        const QList<QVariant>& arguments) {
    QByteArray frame;
    appendMessageFrame(frame, time, channel, name.toUtf8(), arguments);
    return frame;
}

bool appendMessageFrame(QByteArray& bytes, quint64 time, int channel, const QByteArray& encodedName,
                        const QList<QVariant>& arguments) {
    qint64 length = payloadHeaderSize + qint64{sizeof(qint32) + sizeof(quint32) + sizeof(quint8)} +
                    encodedName.size();
    for (const QVariant& argument : arguments) {
        length += encodedSize(argument);
    }
    if (arguments.size() > std::numeric_limits<quint8>::max() ||
        length > static_cast<qint64>(maximumPayloadSize)) {
        return false;
    }
    char* const frame = extend(bytes, frameHeaderSize + static_cast<int>(length));
    Filler filler(frame + frameHeaderSize);
    filler.add(static_cast<quint8>(FrameType::Message));
    filler.add(time);
    filler.add(static_cast<qint32>(channel));
    filler.add(encodedName);
    filler.add(static_cast<quint8>(arguments.size()));
    for (const QVariant& argument : arguments) {
        filler.add(argument);
    }
    seal(frame, static_cast<quint32>(length));
    return true;
}

QByteArray logFrame(quint64 time, Severity severity, const QString& text) {
    QByteArray frame = beginFrame(FrameType::Log, time, text.size() + 8);
    appendInteger(frame, static_cast<quint8>(severity));
    appendText(frame, text);
    return endedFrame(std::move(frame));
}

QByteArray markFrame(quint64 time, const QString& name) {
    QByteArray frame = beginFrame(FrameType::Mark, time, name.size() + 4);
    appendText(frame, name);
    return endedFrame(std::move(frame));
}

QByteArray endFrame(quint64 time, quint64 messages) {
    QByteArray frame = beginFrame(FrameType::End, time, sizeof messages);
    appendInteger(frame, messages);
    return endedFrame(std::move(frame));
}

QByteArray lossFrame(quint64 time, quint64 pictures, quint64 others) {
    QByteArray frame = beginFrame(FrameType::Loss, time, 2 * sizeof(quint64));
    appendInteger(frame, pictures);
    appendInteger(frame, others);
    return endedFrame(frame);
}

QByteArray fillerFrame(quint64 length) {
    constexpr char unknownType = 0;
    QByteArray frame(static_cast<int>(length), unknownType);
    seal(frame.data(), static_cast<quint32>(length - frameHeaderSize));
    return frame;
}

} // namespace RecordingFormat
