// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QSize>

#include <optional>

namespace Vorsk {
namespace RecordStream {

/** What every PNG begins with, and how its chunks are built: length, name, data, CRC-32 of the two.
 */
namespace PngLayout {
constexpr int signatureSize = 8;
constexpr char signature[signatureSize + 1] = "\x89PNG\r\n\x1a\n";
constexpr int lengthSize = 4;
constexpr int nameSize = 4;
constexpr int checksumSize = 4;
/** Bytes of the data of the first chunk, IHDR. */
constexpr int headerDataSize = 13;
} // namespace PngLayout

/** What the first chunk of a PNG says; nothing of it has been checked. */
struct PngHeader {
    quint32 width = 0;
    quint32 height = 0;
    quint8 bitDepth = 0;
    quint8 colourType = 0;
};

/** Null unless the bytes begin as a PNG does, up to the end of the first chunk's data. */
std::optional<PngHeader> readPngHeader(const QByteArray& png);

/** The size that a PNG says it has, not decoded; null when these are no PNG's bytes. */
QSize pngSize(const QByteArray& png);

} // namespace RecordStream
} // namespace Vorsk
