#pragma once

#include "recording/hookmessage.h"

#include <optional>

namespace Uicov::Recording {

/**
 * Reads the bodies of frames. A body that does not have its layout to the byte gives nothing: the
 * frame's checksum was right, so it was written that way, and guessing at it would be wrong.
 */
namespace FrameDecoder {

std::optional<ProcessInfo> process(const QByteArray& body);
std::optional<HookMessage> message(const QByteArray& body);
std::optional<LogLine> log(const QByteArray& body);
/** The name of the context that begins. */
std::optional<QString> mark(const QByteArray& body);
/** The number of messages that were written. */
std::optional<quint64> end(const QByteArray& body);
/** What was left out so far. */
std::optional<Loss> loss(const QByteArray& body);

} // namespace FrameDecoder

} // namespace Uicov::Recording
