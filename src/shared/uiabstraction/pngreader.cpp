#include "uiabstraction/pngreader.h"

#include "checksum/crc32.h"

#include <QByteArray>
#include <QIODevice>
#include <QImage>
#include <QtEndian>

namespace Vorsk {
namespace UIAbstraction {

namespace {

constexpr int signatureSize = 8;
constexpr char signature[signatureSize + 1] = "\x89PNG\r\n\x1a\n";

// A chunk: length of its data, name, data, CRC-32 of name and data.
constexpr int lengthSize = 4;
constexpr int nameSize = 4;
constexpr int checksumSize = 4;

// What the first chunk's data holds, from the start of the picture.
constexpr int headerWidth = signatureSize + lengthSize + nameSize;
constexpr int headerHeight = headerWidth + 4;
constexpr int headerBitDepth = headerHeight + 4;
constexpr int headerColourType = headerBitDepth + 1;

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
bool hasPlausibleSize(const QByteArray& png) {
    const qint64 width = numberAt(png, headerWidth);
    const qint64 height = numberAt(png, headerHeight);
    if (width == 0 || height == 0 || height > maximumImagePixels / width) {
        return false;
    }
    const int bits = bitsPerPixel(static_cast<quint8>(png.at(headerBitDepth)),
                                  static_cast<quint8>(png.at(headerColourType)));
    return width * height * bits / 8 <= png.size() * maximumExpansion;
}

} // namespace

QImage readPng(QIODevice& device) {
    constexpr int headerDataSize = 13;
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
    return hasPlausibleSize(png) ? QImage::fromData(png, "PNG") : QImage();
}

} // namespace UIAbstraction
} // namespace Vorsk
