// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QImage;
class QIODevice;
QT_END_NAMESPACE

namespace Vorsk {
namespace RecordStream {

/** Pictures with more pixels than this are not made, and reading one is an error. */
constexpr qint64 maximumImagePixels = 64LL * 1024 * 1024;

/**
 * Reads exactly one PNG from where the device, which has all its bytes at hand, stands, and leaves
 * the device behind the picture's last byte.
 *
 * Structure and checksums are looked at before anything is decoded: Qt's own reader takes a picture
 * without its last bytes for a whole one, takes memory for whatever size the picture claims, and
 * lets the decoder write what it thinks of the rest to standard error.
 * @return null when there is no sound PNG; the device then stands somewhere inside it
 */
QImage readPng(QIODevice& device);

} // namespace RecordStream
} // namespace Vorsk
