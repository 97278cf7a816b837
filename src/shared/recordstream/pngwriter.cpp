// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordstream/pngwriter.h"

#include "checksum/crc32.h"
#include "recordstream/pngheader.h"

#include <QByteArray>
#include <QDataStream>
#include <QImage>
#include <QtEndian>

#if QT_VERSION >= QT_VERSION_CHECK(5, 14, 0)
#include <QColorSpace>
#endif

namespace Vorsk {
namespace RecordStream {

namespace {

constexpr int lightestCompression = 1;

/** qCompress() puts the size of what it compressed in front. */
constexpr int compressedPrefix = 4;

/** All pixels are copied before they are compressed; Qt, which is slower, goes row by row. */
constexpr qint64 maximumCopiedPixels = 8LL * 1024 * 1024;

void appendNumber(QByteArray& bytes, quint32 number) {
    const quint32 bigEndian = qToBigEndian(number);
    bytes.append(reinterpret_cast<const char*>(&bigEndian), sizeof bigEndian);
}

void appendChunk(QByteArray& png, const char* name, const char* data, int size) {
    appendNumber(png, static_cast<quint32>(size));
    const int start = png.size();
    png.append(name);
    png.append(data, size);
    appendNumber(png, Checksum::crc32(png.constData() + start,
                                      static_cast<std::size_t>(png.size() - start)));
}

void appendChunk(QByteArray& png, const char* name, const QByteArray& data) {
    appendChunk(png, name, data.constData(), data.size());
}

bool isLeftToQt(const QImage& image) {
    switch (image.format()) {
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
    case QImage::Format_ARGB32_Premultiplied:
        break;
    default:
        return true;
    }
#if QT_VERSION >= QT_VERSION_CHECK(5, 14, 0)
    if (image.colorSpace().isValid()) {
        return true;
    }
#endif
    return qint64{image.width()} * image.height() > maximumCopiedPixels ||
           !image.offset().isNull() || !image.textKeys().isEmpty();
}

QByteArray header(const QImage& image) {
    constexpr char bitDepth = 8;
    constexpr char colours = 2;
    constexpr char coloursAndAlpha = 6;
    QByteArray data;
    appendNumber(data, static_cast<quint32>(image.width()));
    appendNumber(data, static_cast<quint32>(image.height()));
    data += bitDepth;
    data += image.hasAlphaChannel() ? coloursAndAlpha : colours;
    data.append(3, '\0'); // deflate, the usual filters, not interlaced
    return data;
}

QByteArray resolution(const QImage& image) {
    constexpr char perMetre = 1;
    QByteArray data;
    appendNumber(data, static_cast<quint32>(image.dotsPerMeterX()));
    appendNumber(data, static_cast<quint32>(image.dotsPerMeterY()));
    data += perMetre;
    return data;
}

/** The rows of an image without premultiplied alpha, each behind the number of no filter. */
QByteArray rows(const QImage& image) {
    const bool hasAlpha = image.hasAlphaChannel();
    const int pixelSize = hasAlpha ? 4 : 3;
    QByteArray data((1 + pixelSize * image.width()) * image.height(), Qt::Uninitialized);
    char* out = data.data();
    for (int y = 0; y < image.height(); ++y) {
        *out++ = 0;
        const auto* const begin = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (const QRgb* pixel = begin; pixel != begin + image.width(); ++pixel) {
            out[0] = static_cast<char>(qRed(*pixel));
            out[1] = static_cast<char>(qGreen(*pixel));
            out[2] = static_cast<char>(qBlue(*pixel));
            if (hasAlpha) {
                out[3] = static_cast<char>(qAlpha(*pixel));
            }
            out += pixelSize;
        }
    }
    return data;
}

} // namespace

QByteArray fastPng(const QImage& image) {
    if (image.isNull() || isLeftToQt(image)) {
        return {};
    }
    const QByteArray compressed =
        qCompress(rows(image.format() == QImage::Format_ARGB32_Premultiplied
                           ? image.convertToFormat(QImage::Format_ARGB32)
                           : image),
                  lightestCompression);
    if (compressed.size() <= compressedPrefix) {
        return {};
    }
    QByteArray png;
    png.reserve(compressed.size() + 128);
    png.append(PngLayout::signature, PngLayout::signatureSize);
    appendChunk(png, "IHDR", header(image));
    if (image.dotsPerMeterX() > 0 || image.dotsPerMeterY() > 0) {
        appendChunk(png, "pHYs", resolution(image));
    }
    appendChunk(png, "IDAT", compressed.constData() + compressedPrefix,
                compressed.size() - compressedPrefix);
    appendChunk(png, "IEND", QByteArray());
    return png;
}

void writeImage(QDataStream& stream, const QImage& image) {
    const QByteArray png = fastPng(image);
    if (png.isEmpty()) {
        stream << image;
        return;
    }
    stream << qint32{1};
    stream.writeRawData(png.constData(), png.size());
}

} // namespace RecordStream
} // namespace Vorsk
