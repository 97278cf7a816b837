// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Any payload as a record of each kind: the first byte chooses the kind, the rest is the payload.

#include "acceptance.h"
#include "fuzzcheck.h"
#include "recording/recorddecoder.h"
#include "recordstream/recordkind.h"
#include "uiabstraction/elementwalk.h"

#include <cstddef>
#include <cstdint>

using RecordingFormat::ArgumentTag;
using Uicov::Recording::decodeRecord;
using Uicov::Recording::DecodingResult;
using Uicov::Recording::HookArgument;
using Uicov::Recording::HookMessage;
using Uicov::Recording::Record;
using Vorsk::RecordStream::RecordKind;
using Vorsk::UIAbstraction::ElementWalk;
using Vorsk::UIAbstraction::UIElement;

namespace {

HookArgument integer(qint32 value) {
    HookArgument argument;
    argument.tag = ArgumentTag::Integer;
    argument.integer = value;
    return argument;
}

HookMessage messageOf(qint32 kind, const QByteArray& payload) {
    HookArgument bytes;
    bytes.tag = ArgumentTag::Bytes;
    bytes.bytes = payload;
    HookMessage message;
    message.name = QLatin1String(Vorsk::RecordStream::coverageMessageName);
    message.arguments = {integer(1), integer(1), integer(kind), bytes};
    return message;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const qint32 kind = data[0];
    const QByteArray payload(reinterpret_cast<const char*>(data + 1), static_cast<int>(size - 1));
    Record record;
    const DecodingResult result = decodeRecord(messageOf(kind, payload), record);
    FUZZ_CHECK(result != DecodingResult::Foreign);
    if (result != DecodingResult::Sound) {
        return 0;
    }
    Fuzz::Acceptance::note();
    FUZZ_CHECK(static_cast<qint32>(record.kind) == kind);
    if (record.kind == RecordKind::ElementAdded) {
        FUZZ_CHECK(record.element != nullptr);
        FUZZ_CHECK(record.element->id() == record.elementId);
        ElementWalk walk(record.element.get());
        int elements = 0;
        while (walk.next() != nullptr) {
            ++elements;
        }
        FUZZ_CHECK(elements > 0);
    }
    return 0;
}
