#pragma once

#include "recording/hookmessage.h"
#include "recording/record.h"

namespace Uicov::Recording {

/**
 * Reads records out of messages. Pictures are looked at but never decoded, but for those inside an
 * ElementAdded record, whose form can only be read as a whole.
 */
namespace RecordDecoder {

enum class Result {
    Sound,   ///< the record is filled
    Foreign, ///< the message carries no record
    Unknown, ///< a record of a kind or form that this version does not know
    Damaged  ///< a record whose payload is not what its kind says
};

/** Fills record from the message; on anything but Sound its contents mean nothing. */
Result decode(const HookMessage& message, Record& record);

} // namespace RecordDecoder

} // namespace Uicov::Recording
