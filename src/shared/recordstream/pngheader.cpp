// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordstream/pngheader.h"

#include <QtEndian>

namespace Vorsk {
namespace RecordStream {

std::optional<PngHeader> readPngHeader(const QByteArray& png) {
    using namespace PngLayout;
    constexpr int dataOffset = signatureSize + lengthSize + nameSize;
    constexpr int bitDepthOffset = dataOffset + 8;
    if (png.size() < dataOffset + headerDataSize || !png.startsWith(signature) ||
        png.mid(signatureSize + lengthSize, nameSize) != "IHDR") {
        return std::nullopt;
    }
    const char* const data = png.constData() + dataOffset;
    return PngHeader{qFromBigEndian<quint32>(data), qFromBigEndian<quint32>(data + 4),
                     static_cast<quint8>(png.at(bitDepthOffset)),
                     static_cast<quint8>(png.at(bitDepthOffset + 1))};
}

QSize pngSize(const QByteArray& png) {
    const std::optional<PngHeader> header = readPngHeader(png);
    // Larger numbers than PNG allows become negative, and an invalid size.
    return header ? QSize(static_cast<int>(header->width), static_cast<int>(header->height))
                  : QSize(0, 0);
}

} // namespace RecordStream
} // namespace Vorsk
