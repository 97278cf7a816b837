// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recording/hookmessage.h"
#include "recording/record.h"

// Reads records out of messages. Pictures are looked at but never decoded, but for those inside an
// ElementAdded record, whose form can only be read as a whole.
namespace Uicov::Recording {

enum class DecodingResult {
    Sound,   ///< the record is filled
    Foreign, ///< the message carries no record
    Unknown, ///< a record of a kind or form that this version does not know
    Damaged  ///< a record whose payload is not what its kind says
};

/** Fills record from the message; on anything but Sound its contents mean nothing. */
DecodingResult decodeRecord(const HookMessage& message, Record& record);

} // namespace Uicov::Recording
