// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

/**
 * The layout of a recording (.uirec): what the writer in the application and the reader in uicov
 * agree on. All integers are big-endian; nothing is aligned; nothing depends on the architecture.
 *
 *   file      = header frame*
 *   header    = magic (8 bytes), version (quint32), in version 2 then:
 *               zero (quint32), end (quint64), held place (quint64), held length (quint64)
 *   frame     = length (quint32), checksum (quint32), payload (length bytes)
 *   payload   = type (quint8), time (quint64, microseconds since the recording was opened), body
 *
 * The checksum is zlib's CRC-32 of the payload. A reader skips a frame type that it does not know.
 * A file that ends inside a frame, or a frame whose checksum does not fit, ends what can be read:
 * all before it is sound.
 *
 *   body of a Process frame  = count (quint32), then count pairs of texts (key, value)
 *   body of a Message frame  = channel (qint32), name (text), count (quint8), then count arguments
 *   body of a Log frame      = severity (quint8), text
 *   body of a Mark frame     = text (name of the context that begins here)
 *   body of an End frame     = number of Message frames written (quint64)
 *   body of a Loss frame     = messages with pictures (quint64) and other messages (quint64) that
 * were left out so far for the recording's size limit
 *
 *   text      = length in bytes (quint32), UTF-8
 *   argument  = tag (quint8), then for Integer: qint32; for Bytes: length (quint32), bytes;
 *               for Variant: length (quint32), a QVariant in QDataStream version 12 form
 *
 * The last Loss frame counts. The first frame is the Process frame, the last frame of a recording
 * that ended in order is the End frame; only Mark frames may stand behind it.
 *
 * Whoever knows the file may append Mark frames while it grows: in version 1 each whole with one
 * write(2) to a descriptor opened with O_APPEND, in version 2 by the protocol of sharedheader.h. In
 * version 2 the file is preallocated: it is longer than `end`, with zeros behind, while it grows.
 */
namespace RecordingFormat {

constexpr char magic[8] = {'U', 'I', 'R', 'E', 'C', '\r', '\n', '\x1a'};
/** The highest that there is. */
constexpr quint32 version = 2;
/** Of a recording that is written with write(2) alone. */
constexpr quint32 plainVersion = 1;
/** Of a recording that is written through shared memory. */
constexpr quint32 sharedVersion = 2;
/** Bytes of the header in version 1, and with which that of version 2 begins. */
constexpr int headerSize = 12;
constexpr int sharedHeaderSize = 40;
/** Places in the header of version 2; multiples of eight, as atomic operations need. */
constexpr int endOffset = 16;
constexpr int heldPlaceOffset = 24;
constexpr int heldLengthOffset = 32;
constexpr int frameHeaderSize = 8;
/** Bytes of a payload before its body. */
constexpr int payloadHeaderSize = 9;
/** No sound frame is longer; a larger length is damage. */
constexpr quint32 maximumPayloadSize = 512U * 1024 * 1024;

/** Whether a recording that ends there can have that place held; a damaged header says anything. */
constexpr bool canBeHeld(quint64 place, quint64 length, quint64 end) {
    return place >= sharedHeaderSize && place <= end && length <= end - place &&
           length >= frameHeaderSize && length - frameHeaderSize <= maximumPayloadSize;
}

enum class FrameType : quint8 { Process = 1, Message = 2, Log = 3, Mark = 4, End = 5, Loss = 6 };

enum class ArgumentTag : quint8 { Integer = 1, Bytes = 2, Variant = 3 };

enum class Severity : quint8 { Info = 1, Warning = 2 };

/** Keys of the Process frame. Unknown keys are kept by readers. */
namespace Key {
constexpr char application[] = "application"; ///< QCoreApplication::applicationName()
constexpr char executable[] = "executable";   ///< absolute path
constexpr char pid[] = "pid";
constexpr char run[] = "run"; ///< UUID of this process's run
constexpr char session[] =
    "session"; ///< UUID that uicov gave to all processes of one call; may be empty
constexpr char qtVersion[] = "qt-version";
constexpr char platform[] = "platform"; ///< QGuiApplication::platformName()
constexpr char locale[] = "locale";
constexpr char architecture[] = "architecture"; ///< QSysInfo::buildAbi()
constexpr char started[] = "started";           ///< ISO 8601, UTC
constexpr char context[] = "context"; ///< name of the context of the run as a whole; may be empty
constexpr char extension[] = "extension"; ///< names of the extension libraries, with commas between
constexpr char clock[] = "clock";         ///< microseconds of CLOCK_MONOTONIC at time 0
constexpr char label[] = "label.";        ///< start of the keys of labels; the label's name follows
} // namespace Key

} // namespace RecordingFormat
