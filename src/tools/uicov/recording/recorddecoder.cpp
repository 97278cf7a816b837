#include "recording/recorddecoder.h"

#include "recording/bytecursor.h"
#include "uiabstraction/elementstream.h"

#include <QDataStream>
#include <QSize>
#include <QtEndian>

#include <cstring>

namespace Uicov::Recording::RecordDecoder {

using RecordingFormat::ArgumentTag;
using Vorsk::UIAbstraction::RecordKind;

namespace {

/** Position of each value among a message's arguments. */
enum Argument { ApplicationId, Form, Kind, Payload, ArgumentCount };

/** The only form of record arguments that there is so far. */
constexpr qint32 knownForm = 1;

bool hasRecordArguments(const QVector<HookArgument>& arguments) {
    return arguments.size() == ArgumentCount &&
           arguments.at(ApplicationId).tag == ArgumentTag::Integer &&
           arguments.at(Form).tag == ArgumentTag::Integer &&
           arguments.at(Kind).tag == ArgumentTag::Integer &&
           arguments.at(Payload).tag == ArgumentTag::Bytes;
}

bool isKnownKind(qint32 kind) {
    return kind >= static_cast<qint32>(RecordKind::ElementAdded) &&
           kind <= static_cast<qint32>(RecordKind::UsageIncreased);
}

void readPicture(QDataStream& stream, Record& record) {
    qint32 marker = 0;
    stream >> marker;
    record.picture.clear();
    if (stream.status() != QDataStream::Ok || marker == 0) {
        return;
    }
    record.picture = stream.device()->readAll();
    if (marker != 1 || pictureSize(record.picture).isNull()) {
        stream.setStatus(QDataStream::ReadCorruptData);
    }
}

/** The kinds that carry an element or a picture. */
bool readStreamed(const QByteArray& payload, Record& record) {
    QDataStream stream(payload);
    stream.setVersion(Vorsk::UIAbstraction::streamVersion);
    stream >> record.elementId;
    if (stream.status() != QDataStream::Ok) {
        return false;
    }
    if (record.kind == RecordKind::ImageChanged) {
        readPicture(stream, record);
    } else {
        record.element = Vorsk::UIAbstraction::readElement(stream);
        if (record.element && record.element->id() != record.elementId) {
            stream.setStatus(QDataStream::ReadCorruptData);
        }
    }
    return stream.status() == QDataStream::Ok && stream.atEnd();
}

/** The others, which are small and many: a stream takes longer to make than they take to read. */
bool readSmall(const QByteArray& payload, Record& record) {
    ByteCursor cursor(payload);
    record.elementId = cursor.readStreamedText();
    switch (record.kind) {
    case RecordKind::ElementAdded:
    case RecordKind::ImageChanged:
        return false;
    case RecordKind::ChildAdded:
    case RecordKind::EventRegistered:
    case RecordKind::StandardTypeChanged:
    case RecordKind::TextChanged:
        record.text = cursor.readStreamedText();
        break;
    case RecordKind::GeometryChanged: {
        const int left = cursor.readInt32();
        const int top = cursor.readInt32();
        const int right = cursor.readInt32();
        record.rect.setCoords(left, top, right, cursor.readInt32());
        break;
    }
    case RecordKind::TransparentNodeChanged:
    case RecordKind::SubgraphTransparentChanged:
    case RecordKind::WindowNodeChanged:
        record.flag = cursor.readUInt8() != 0;
        break;
    case RecordKind::UsageIncreased:
        record.text = cursor.readStreamedText();
        record.count = cursor.readInt32();
        break;
    }
    return cursor.isAtSoundEnd();
}

} // namespace

Result decode(const HookMessage& message, Record& record) {
    if (message.name != QLatin1String(Vorsk::UIAbstraction::coverageMessageName)) {
        return Result::Foreign;
    }
    if (!hasRecordArguments(message.arguments)) {
        return Result::Damaged;
    }
    const qint32 kind = message.arguments.at(Kind).integer;
    if (message.arguments.at(Form).integer != knownForm || !isKnownKind(kind)) {
        return Result::Unknown;
    }
    record.kind = static_cast<RecordKind>(kind);
    const QByteArray& payload = message.arguments.at(Payload).bytes;
    const bool isStreamed =
        record.kind == RecordKind::ElementAdded || record.kind == RecordKind::ImageChanged;
    const bool isSound = isStreamed ? readStreamed(payload, record) : readSmall(payload, record);
    return isSound ? Result::Sound : Result::Damaged;
}

QSize pictureSize(const QByteArray& png) {
    constexpr char signature[] = "\x89PNG\r\n\x1a\n";
    constexpr int widthOffset = 16; // behind the signature, the first chunk's length and its name
    constexpr int heightOffset = 20;
    constexpr int sizeEnd = 24;
    if (png.size() < sizeEnd ||
        std::memcmp(png.constData(), signature, sizeof signature - 1) != 0) {
        return {0, 0};
    }
    return {qFromBigEndian<qint32>(png.constData() + widthOffset),
            qFromBigEndian<qint32>(png.constData() + heightOffset)};
}

} // namespace Uicov::Recording::RecordDecoder
