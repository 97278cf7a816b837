// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QByteArray;
class QDataStream;
class QImage;
QT_END_NAMESPACE

namespace Vorsk {
namespace RecordStream {

/**
 * The image as a PNG that is made fast: the lightest compression, and no filter. Reading it gives
 * what reading Qt's own PNG of the image gives.
 * @return empty for an image of a kind that is left to Qt: with a pixel format other than the three
 *         32-bit ones that grabbing makes, with texts, an offset or a colour space, or very large
 */
QByteArray fastPng(const QImage& image);

/** Writes the image as Qt's own operator does, but with its PNG made by fastPng() where it can be.
 */
void writeImage(QDataStream& stream, const QImage& image);

} // namespace RecordStream
} // namespace Vorsk
