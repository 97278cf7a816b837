#include "vorskhook/framebuilder.h"

#include <QDataStream>
#include <QVariant>
#include <QtEndian>

#include <limits>

#include <zlib.h>

namespace VorskHost {

namespace {

using namespace RecordingFormat;

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

void appendArgument(QByteArray& bytes, const QVariant& argument) {
    switch (argument.userType()) {
    case QMetaType::Int:
        appendInteger(bytes, static_cast<quint8>(ArgumentTag::Integer));
        appendInteger(bytes, static_cast<qint32>(argument.toInt()));
        return;
    case QMetaType::QByteArray:
        appendInteger(bytes, static_cast<quint8>(ArgumentTag::Bytes));
        appendBytes(bytes, argument.toByteArray());
        return;
    default:
        break;
    }
    QByteArray encoded;
    QDataStream stream(&encoded, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_4_6);
    stream << argument;
    appendInteger(bytes, static_cast<quint8>(ArgumentTag::Variant));
    appendBytes(bytes, encoded);
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
    char* start = frame.data();
    const auto* payload = reinterpret_cast<const Bytef*>(start + frameHeaderSize);
    qToBigEndian(length, start);
    qToBigEndian(static_cast<quint32>(crc32(0, payload, length)), start + sizeof length);
    return frame;
}

/** Bytes of an argument, near enough for reserving and exact for what can be large. */
qint64 estimatedSize(const QVariant& argument) {
    constexpr int overhead = 16;
    return argument.userType() == QMetaType::QByteArray
               ? overhead + static_cast<qint64>(argument.toByteArray().size())
               : overhead;
}

} // namespace

namespace FrameBuilder {

QByteArray header() {
    QByteArray bytes(magic, sizeof magic);
    appendInteger(bytes, version);
    return bytes;
}

QByteArray processFrame(quint64 time, const ProcessInfo& info) {
    QByteArray frame = beginFrame(FrameType::Process, time, 0);
    appendInteger(frame, static_cast<quint32>(info.size()));
    for (const auto& entry : info) {
        appendText(frame, entry.first);
        appendText(frame, entry.second);
    }
    return endedFrame(frame);
}

QByteArray messageFrame(quint64 time, int channel, const QString& name,
                        const Vorsk::ArgumentList& args) {
    qint64 bodySize = name.size() + 16;
    for (const QVariant& argument : args) {
        bodySize += estimatedSize(argument);
    }
    if (args.size() > std::numeric_limits<quint8>::max() ||
        bodySize > static_cast<qint64>(maximumPayloadSize)) {
        return {};
    }
    QByteArray frame = beginFrame(FrameType::Message, time, static_cast<int>(bodySize));
    appendInteger(frame, static_cast<qint32>(channel));
    appendText(frame, name);
    appendInteger(frame, static_cast<quint8>(args.size()));
    for (const QVariant& argument : args) {
        appendArgument(frame, argument);
    }
    return endedFrame(frame);
}

QByteArray logFrame(quint64 time, Severity severity, const QString& text) {
    QByteArray frame = beginFrame(FrameType::Log, time, text.size() + 8);
    appendInteger(frame, static_cast<quint8>(severity));
    appendText(frame, text);
    return endedFrame(frame);
}

QByteArray markFrame(quint64 time, const QString& name) {
    QByteArray frame = beginFrame(FrameType::Mark, time, name.size() + 4);
    appendText(frame, name);
    return endedFrame(frame);
}

QByteArray endFrame(quint64 time, quint64 messages) {
    QByteArray frame = beginFrame(FrameType::End, time, sizeof messages);
    appendInteger(frame, messages);
    return endedFrame(frame);
}

QByteArray lossFrame(quint64 time, quint64 pictures, quint64 others) {
    QByteArray frame = beginFrame(FrameType::Loss, time, 2 * sizeof(quint64));
    appendInteger(frame, pictures);
    appendInteger(frame, others);
    return endedFrame(frame);
}

} // namespace FrameBuilder

} // namespace VorskHost
