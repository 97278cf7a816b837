// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>

#include <memory>

QT_BEGIN_NAMESPACE
class QByteArray;
class QDataStream;
class QImage;
QT_END_NAMESPACE

namespace Vorsk {

namespace UIAbstraction {

class UIElement;

/**
 * Writes the element with all below it: id, types, extras, flags, text, geometry, image, usage,
 * then the number of children and each child in the same form. An element that stands below itself
 * is left out there, and in the number. In the model's version, whatever the stream's. In
 * this namespace, because that is where the compiler looks for an element's operators.
 */
QDataStream& operator<<(QDataStream& stream, const UIElement& element);

} // namespace UIAbstraction

namespace RecordStream {

class PayloadReader;

/**
 * Reads one element with all below it; the caller owns it. Stops at the first error: the result is
 * then null and the stream's status is not QDataStream::Ok. Numbers in the stream are not trusted:
 * memory and time go with the bytes that are there, and with the pixels that these can hold.
 */
std::unique_ptr<UIAbstraction::UIElement> readElement(QDataStream& stream);
/** The same from a payload, several times as fast. */
std::unique_ptr<UIAbstraction::UIElement> readElement(PayloadReader& reader);

/**
 * Reads a count (qint32) and that many elements, each a root that the caller owns. On damage the
 * result holds the elements before it and ok, if given, is false.
 * For readers of the stream that use this library; nothing else here calls it.
 */
QList<UIAbstraction::UIElement*> readElements(const QByteArray& data, bool* ok = nullptr);

/**
 * Reads an image as QDataStream does, but takes a damaged one for an error and looks at its size
 * before memory is taken for it.
 * @return false when the stream's status is not QDataStream::Ok afterwards; the image is then null
 */
bool readImage(QDataStream& stream, QImage& image);

} // namespace RecordStream
} // namespace Vorsk
