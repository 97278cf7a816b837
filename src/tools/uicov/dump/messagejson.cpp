// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "dump/messagejson.h"

#include "dump/recordtext.h"
#include "recording/framedecoder.h"
#include "recording/recorddecoder.h"
#include "recordstream/pngheader.h"
#include "uiabstraction/elementwalk.h"
#include "uiabstraction/uielement.h"

#include <QJsonArray>
#include <QSet>
#include <QSize>

namespace Uicov::Dump {

using Recording::DecodingResult;
using Recording::Frame;
using Recording::HookArgument;
using Recording::HookMessage;
using Recording::Record;
using RecordingFormat::ArgumentTag;
using RecordingFormat::FrameType;
using Vorsk::RecordStream::RecordKind;
using Vorsk::UIAbstraction::ElementWalk;
using Vorsk::UIAbstraction::UIElement;

namespace {

QString key(const char* name) {
    return QLatin1String(name);
}

QJsonValue textValue(const QString& text) {
    return text.isNull() ? QJsonValue() : QJsonValue(text);
}

QJsonObject rectObject(const QRect& rect) {
    return {{key("left"), rect.left()},
            {key("top"), rect.top()},
            {key("right"), rect.right()},
            {key("bottom"), rect.bottom()}};
}

QJsonValue pictureValue(const QByteArray& png) {
    if (png.isEmpty()) {
        return {};
    }
    const QSize size = Vorsk::RecordStream::pngSize(png);
    return QJsonObject{
        {key("width"), size.width()}, {key("height"), size.height()}, {key("bytes"), png.size()}};
}

QJsonObject elementObject(const UIElement& element) {
    QJsonObject events;
    const auto usage = element.usage();
    for (auto it = usage.cbegin(); it != usage.cend(); ++it) {
        events.insert(it.key().name(), it.value());
    }
    QJsonArray children;
    for (const UIElement* child : element.children()) {
        children.append(child->id());
    }
    QJsonObject object{{key("id"), element.id()},
                       {key("class"), element.concreteType()},
                       {key("type"), element.standardType().name()},
                       {key("text"), textValue(element.text())},
                       {key("events"), events},
                       {key("transparent"), element.isTransparentNode()},
                       {key("subgraphTransparent"), element.isSubgraphTransparent()},
                       {key("window"), element.isWindowNode()},
                       {key("children"), children}};
    if (element.geometry().isValid()) {
        object.insert(key("rect"), rectObject(element.geometry().rect()));
    }
    const QHash<QString, QString> attributes = element.attributes();
    if (!attributes.isEmpty()) {
        QJsonObject values;
        for (auto it = attributes.cbegin(); it != attributes.cend(); ++it) {
            values.insert(it.key(), textValue(it.value()));
        }
        object.insert(key("attributes"), values);
    }
    return object;
}

/**
 * The element and all below it; flat, because nothing bounds how deep they stand, and each id once:
 * one below two parents is sent, and read, twice.
 */
QJsonArray elementArray(const UIElement& added) {
    QJsonArray elements;
    QSet<QString> known;
    ElementWalk walk(&added);
    while (const UIElement* element = walk.next()) {
        if (!known.contains(element->id())) {
            known.insert(element->id());
            elements.append(elementObject(*element));
        }
    }
    return elements;
}

void addRecord(const Record& record, QJsonObject& object) {
    object.insert(key("record"), kindName(record.kind));
    object.insert(key("id"), record.elementId);
    switch (record.kind) {
    case RecordKind::ElementAdded:
        object.insert(key("elements"), elementArray(*record.element));
        break;
    case RecordKind::ChildAdded:
        object.insert(key("child"), record.text);
        break;
    case RecordKind::EventRegistered:
        object.insert(key("event"), record.text);
        break;
    case RecordKind::GeometryChanged:
        object.insert(key("rect"), rectObject(record.rect));
        break;
    case RecordKind::ImageChanged:
        object.insert(key("picture"), pictureValue(record.picture));
        break;
    case RecordKind::StandardTypeChanged:
        object.insert(key("type"), record.text);
        break;
    case RecordKind::TextChanged:
        object.insert(key("text"), textValue(record.text));
        break;
    case RecordKind::TransparentNodeChanged:
    case RecordKind::SubgraphTransparentChanged:
    case RecordKind::WindowNodeChanged:
        object.insert(key("value"), record.flag);
        break;
    case RecordKind::UsageIncreased:
        object.insert(key("event"), record.text);
        object.insert(key("count"), record.count);
        break;
    case RecordKind::AttributeChanged:
        object.insert(key("attribute"), record.name);
        object.insert(key("value"), textValue(record.text));
        break;
    }
}

QJsonArray argumentArray(const HookMessage& message) {
    QJsonArray arguments;
    for (const HookArgument& argument : message.arguments) {
        if (argument.tag == ArgumentTag::Integer) {
            arguments.append(argument.integer);
        } else {
            arguments.append(QJsonObject{{key("bytes"), argument.bytes.size()}});
        }
    }
    return arguments;
}

bool addMessage(const QByteArray& body, QJsonObject& object) {
    const auto message = Recording::decodeMessage(body);
    if (!message) {
        return false;
    }
    Record record;
    const DecodingResult result = Recording::decodeRecord(*message, record);
    if (result == DecodingResult::Sound) {
        addRecord(record, object);
        return true;
    }
    if (result == DecodingResult::Unknown || result == DecodingResult::Damaged) {
        object.insert(key("record"),
                      result == DecodingResult::Unknown ? key("unknown") : key("damaged"));
    }
    object.insert(key("name"), message->name);
    object.insert(key("channel"), message->channel);
    object.insert(key("arguments"), argumentArray(*message));
    return true;
}

bool addProcess(const QByteArray& body, QJsonObject& object) {
    const auto info = Recording::decodeProcess(body);
    if (!info) {
        return false;
    }
    QJsonObject values;
    for (auto it = info->cbegin(); it != info->cend(); ++it) {
        values.insert(it.key(), it.value());
    }
    object.insert(key("process"), values);
    return true;
}

bool addLog(const QByteArray& body, QJsonObject& object) {
    const auto line = Recording::decodeLog(body);
    if (!line) {
        return false;
    }
    const bool isInfo = line->severity == RecordingFormat::Severity::Info;
    object.insert(key("severity"), isInfo ? key("info") : key("warning"));
    object.insert(key("text"), line->text);
    return true;
}

bool addMark(const QByteArray& body, QJsonObject& object) {
    const auto name = Recording::decodeMark(body);
    object.insert(key("context"), name.value_or(QString()));
    return name.has_value();
}

bool addEnd(const QByteArray& body, QJsonObject& object) {
    const auto count = Recording::decodeEnd(body);
    object.insert(key("messages"), static_cast<qint64>(count.value_or(0)));
    return count.has_value();
}

bool addLoss(const QByteArray& body, QJsonObject& object) {
    const auto loss = Recording::decodeLoss(body);
    object.insert(key("pictures"), static_cast<qint64>(loss ? loss->pictures : 0));
    object.insert(key("others"), static_cast<qint64>(loss ? loss->others : 0));
    return loss.has_value();
}

bool addBody(const Frame& frame, QJsonObject& object) {
    switch (frame.type) {
    case FrameType::Process:
        object.insert(key("frame"), key("process"));
        return addProcess(frame.body, object);
    case FrameType::Message:
        object.insert(key("frame"), key("message"));
        return addMessage(frame.body, object);
    case FrameType::Log:
        object.insert(key("frame"), key("log"));
        return addLog(frame.body, object);
    case FrameType::Mark:
        object.insert(key("frame"), key("mark"));
        return addMark(frame.body, object);
    case FrameType::End:
        object.insert(key("frame"), key("end"));
        return addEnd(frame.body, object);
    case FrameType::Loss:
        object.insert(key("frame"), key("loss"));
        return addLoss(frame.body, object);
    }
    return false;
}

} // namespace

QJsonObject frameJson(const Frame& frame) {
    QJsonObject object{{key("microseconds"), static_cast<qint64>(frame.time)}};
    if (!addBody(frame, object)) {
        object.insert(key("damaged"), true);
    }
    return object;
}

} // namespace Uicov::Dump
