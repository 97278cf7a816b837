// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/recorddecoder.h"

#include "recordstream/elementstream.h"
#include "recordstream/payloadreader.h"
#include "recordstream/pngheader.h"

#include <QSize>

namespace Uicov::Recording {

using RecordingFormat::ArgumentTag;
using Vorsk::RecordStream::PayloadReader;
using Vorsk::RecordStream::RecordKind;

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
    return marker == 1 && !Vorsk::RecordStream::pngSize(record.picture).isNull();
}

bool readElement(PayloadReader& reader, Record& record) {
    record.element = Vorsk::RecordStream::readElement(reader);
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
    if (message.name != QLatin1String(Vorsk::RecordStream::coverageMessageName)) {
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

} // namespace Uicov::Recording
