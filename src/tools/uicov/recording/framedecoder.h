// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recording/hookmessage.h"

#include <optional>

// Reads the bodies of frames. A body that does not have its layout to the byte gives nothing: the
// frame's checksum was right, so it was written that way, and guessing at it would be wrong.
namespace Uicov::Recording {

std::optional<ProcessInfo> decodeProcess(const QByteArray& body);
std::optional<HookMessage> decodeMessage(const QByteArray& body);
std::optional<LogLine> decodeLog(const QByteArray& body);
/** The name of the context that begins. */
std::optional<QString> decodeMark(const QByteArray& body);
/** The number of messages that were written. */
std::optional<quint64> decodeEnd(const QByteArray& body);
/** What was left out so far. */
std::optional<Loss> decodeLoss(const QByteArray& body);

} // namespace Uicov::Recording
