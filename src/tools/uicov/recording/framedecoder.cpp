// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/framedecoder.h"

#include "recording/bytecursor.h"

namespace Uicov::Recording {

using RecordingFormat::ArgumentTag;
using RecordingFormat::Severity;

namespace {

bool readArgument(ByteCursor& cursor, HookArgument& argument) {
    const quint8 tag = cursor.readUInt8();
    argument.tag = static_cast<ArgumentTag>(tag);
    switch (argument.tag) {
    case ArgumentTag::Integer:
        argument.integer = cursor.readInt32();
        return cursor.isOk();
    case ArgumentTag::Bytes:
    case ArgumentTag::Variant:
        argument.bytes = cursor.readBytes();
        return cursor.isOk();
    }
    return false; // a tag that is not known has a length that is not known
}

} // namespace

std::optional<ProcessInfo> decodeProcess(const QByteArray& body) {
    ByteCursor cursor(body);
    ProcessInfo info;
    const quint32 count = cursor.readUInt32();
    for (quint32 i = 0; i < count && cursor.isOk(); ++i) {
        const QString key = cursor.readText();
        info.insert(key, cursor.readText());
    }
    return cursor.isAtSoundEnd() ? std::make_optional(info) : std::nullopt;
}

std::optional<HookMessage> decodeMessage(const QByteArray& body) {
    ByteCursor cursor(body);
    HookMessage message;
    message.channel = cursor.readInt32();
    message.name = cursor.readText();
    const quint8 count = cursor.readUInt8();
    message.arguments.reserve(count);
    for (quint8 i = 0; i < count; ++i) {
        HookArgument argument;
        if (!readArgument(cursor, argument)) {
            return std::nullopt;
        }
        message.arguments.append(argument);
    }
    return cursor.isAtSoundEnd() ? std::make_optional(message) : std::nullopt;
}

std::optional<LogLine> decodeLog(const QByteArray& body) {
    ByteCursor cursor(body);
    LogLine line;
    // What is not known as harmless is shown as a warning.
    line.severity = cursor.readUInt8() == static_cast<quint8>(Severity::Info) ? Severity::Info
                                                                              : Severity::Warning;
    line.text = cursor.readText();
    return cursor.isAtSoundEnd() ? std::make_optional(line) : std::nullopt;
}

std::optional<QString> decodeMark(const QByteArray& body) {
    ByteCursor cursor(body);
    const QString name = cursor.readText();
    return cursor.isAtSoundEnd() ? std::make_optional(name) : std::nullopt;
}

std::optional<quint64> decodeEnd(const QByteArray& body) {
    ByteCursor cursor(body);
    const quint64 count = cursor.readUInt64();
    return cursor.isAtSoundEnd() ? std::make_optional(count) : std::nullopt;
}

std::optional<Loss> decodeLoss(const QByteArray& body) {
    ByteCursor cursor(body);
    Loss loss;
    loss.pictures = cursor.readUInt64();
    loss.others = cursor.readUInt64();
    return cursor.isAtSoundEnd() ? std::make_optional(loss) : std::nullopt;
}

} // namespace Uicov::Recording
