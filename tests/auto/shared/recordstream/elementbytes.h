// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

// Elements as bytes, for the tests that write and read them.

#include "recordstream/elementstream.h"
#include "recordstream/recordkind.h"
#include "uiabstraction/uielement.h"

#include <QByteArray>
#include <QDataStream>

#include <memory>

namespace ElementBytes {

using Vorsk::RecordStream::readElement;
using Vorsk::RecordStream::streamVersion;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

/** Two pixels, red and blue. */
inline constexpr char pngHex[] =
    "89504e470d0a1a0a 0000000d49484452 00000002000000010802000000 7b40e8dd"
    "0000000d49444154 789c63f8cf0004ff01070001ff e2239e59"
    "0000000049454e44ae426082";

inline QByteArray fromHex(const QByteArray& hex) {
    return QByteArray::fromHex(hex);
}

inline QByteArray toBytes(const UIElement& element) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    stream << element;
    return bytes;
}

inline std::unique_ptr<UIElement> fromBytes(const QByteArray& bytes) {
    QDataStream stream(bytes);
    stream.setVersion(streamVersion);
    std::unique_ptr<UIElement> element = readElement(stream);
    return stream.status() == QDataStream::Ok && stream.atEnd() ? std::move(element) : nullptr;
}

/** Id, types and extraString3 and 4 as "i", "B", "Q" and null texts; no extraStrings; no flags. */
inline const QByteArray plainStart =
    "00000002 0069  00000002 0042  00000002 0051  ffffffff ffffffff"
    "00000000  000000";
/** Null text and geometry, no image, null extraString1 and 2, no attributes, no usage. */
inline const QByteArray plainEnd = "ffffffff  00000000 00000000 ffffffff ffffffff 00  00000000"
                                   "ffffffff ffffffff  00000000 00000000  00000000";

inline UIElement plainElement() {
    return {QStringLiteral("Q"), StandardType(QStringLiteral("B")), QStringLiteral("i")};
}

} // namespace ElementBytes
