// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordstream/pngreader.h"

#include "checksum/crc32.h"
#include "recordstream/pngheader.h"

#include <QByteArray>
#include <QIODevice>
#include <QImage>
#include <QtEndian>

namespace Vorsk {
namespace RecordStream {

using namespace PngLayout;

namespace {

/** No picture of the pixels that are allowed is longer. */
constexpr qint64 maximumSize = 1024LL * 1024 * 1024;

/** What deflate can make of one byte at best. */
constexpr qint64 maximumExpansion = 1032;

quint32 numberAt(const QByteArray& bytes, int offset) {
    return qFromBigEndian<quint32>(bytes.constData() + offset);
}

/** False when fewer bytes are there; never takes memory for more than there are. */
bool append(QByteArray& bytes, QIODevice& device, qint64 size) {
    if (size > device.bytesAvailable() || size > maximumSize - bytes.size()) {
        return false;
    }
    const QByteArray more = device.read(size);
    bytes += more;
    return more.size() == size;
}

/** Appends one chunk with a right checksum; its name is returned, null when there is none. */
QByteArray appendChunk(QByteArray& bytes, QIODevice& device) {
    const int start = bytes.size();
    if (!append(bytes, device, lengthSize + nameSize) ||
        !append(bytes, device, qint64{numberAt(bytes, start)} + checksumSize)) {
        return {};
    }
    const char* const name = bytes.constData() + start + lengthSize;
    const char* const end = bytes.constData() + bytes.size() - checksumSize;
    return Checksum::crc32(name, static_cast<std::size_t>(end - name)) ==
                   qFromBigEndian<quint32>(end)
               ? QByteArray(name, nameSize)
               : QByteArray();
}

int bitsPerPixel(int bitDepth, int colourType) {
    switch (colourType) {
    case 2:
        return 3 * bitDepth;
    case 4:
        return 2 * bitDepth;
    case 6:
        return 4 * bitDepth;
    default:
        return bitDepth;
    }
}

/** Whether so many pixels are allowed, and can stand in that many bytes. */
bool hasPlausibleSize(const PngHeader& header, qint64 bytes) {
    const qint64 width = header.width;
    const qint64 height = header.height;
    if (width == 0 || height == 0 || height > maximumImagePixels / width) {
        return false;
    }
    const int bits = bitsPerPixel(header.bitDepth, header.colourType);
    return width * height * bits / 8 <= bytes * maximumExpansion;
}

} // namespace

QImage readPng(QIODevice& device) {
    QByteArray png;
    if (!append(png, device, signatureSize) || png != signature ||
        appendChunk(png, device) != "IHDR" || numberAt(png, signatureSize) != headerDataSize) {
        return {};
    }
    for (QByteArray name; name != "IEND";) {
        name = appendChunk(png, device);
        if (name.isNull()) {
            return {};
        }
    }
    const std::optional<PngHeader> header = readPngHeader(png);
    return header && hasPlausibleSize(*header, png.size()) ? QImage::fromData(png, "PNG")
                                                           : QImage();
}

} // namespace RecordStream
} // namespace Vorsk
