#include "recording/recorddecoder.h"

#include "uiabstraction/elementstream.h"
#include "uiabstraction/payloadreader.h"

#include <QSize>
#include <QtEndian>

#include <cstring>

namespace Uicov::Recording {

using RecordingFormat::ArgumentTag;
using Vorsk::UIAbstraction::PayloadReader;
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
           kind <= static_cast<qint32>(RecordKind::AttributeChanged);
}

bool readPicture(PayloadReader& reader, Record& record) {
    qint32 marker = 0;
    reader >> marker;
    record.picture.clear();
    if (marker == 0) {
        return reader.isAtSoundEnd();
    }
    record.picture = reader.takeRest();
    return marker == 1 && !pictureSize(record.picture).isNull();
}

bool readElement(PayloadReader& reader, Record& record) {
    record.element = Vorsk::UIAbstraction::readElement(reader);
    return record.element && record.element->id() == record.elementId && reader.isAtSoundEnd();
}

/** What stands behind the element's id; false unless it is all there and nothing else. */
bool readContent(PayloadReader& reader, Record& record) {
    switch (record.kind) {
    case RecordKind::ElementAdded:
        return readElement(reader, record);
    case RecordKind::ImageChanged:
        return readPicture(reader, record);
    case RecordKind::ChildAdded:
    case RecordKind::EventRegistered:
    case RecordKind::StandardTypeChanged:
    case RecordKind::TextChanged:
        reader >> record.text;
        break;
    case RecordKind::GeometryChanged:
        reader >> record.rect;
        break;
    case RecordKind::TransparentNodeChanged:
    case RecordKind::SubgraphTransparentChanged:
    case RecordKind::WindowNodeChanged:
        reader >> record.flag;
        break;
    case RecordKind::UsageIncreased:
        reader >> record.text >> record.count;
        break;
    case RecordKind::AttributeChanged:
        reader >> record.name >> record.text;
        break;
    }
    return reader.isAtSoundEnd();
}

} // namespace

DecodingResult decodeRecord(const HookMessage& message, Record& record) {
    if (message.name != QLatin1String(Vorsk::UIAbstraction::coverageMessageName)) {
        return DecodingResult::Foreign;
    }
    if (!hasRecordArguments(message.arguments)) {
        return DecodingResult::Damaged;
    }
    const qint32 kind = message.arguments.at(Kind).integer;
    if (message.arguments.at(Form).integer != knownForm || !isKnownKind(kind)) {
        return DecodingResult::Unknown;
    }
    record.kind = static_cast<RecordKind>(kind);
    PayloadReader reader(message.arguments.at(Payload).bytes);
    reader >> record.elementId;
    return readContent(reader, record) ? DecodingResult::Sound : DecodingResult::Damaged;
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

} // namespace Uicov::Recording
