// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordstream/payloadwriter.h"

#include "recordstream/pngwriter.h"
#include "recordstream/recordkind.h"
#include "uiabstraction/elementwalk.h"
#include "uiabstraction/uielement.h"

#include <QDataStream>
#include <QIODevice>
#include <QRect>

#include <cstring>
#include <utility>

namespace Vorsk {
namespace RecordStream {

using UIAbstraction::ElementGeometry;
using UIAbstraction::ElementWalk;
using UIAbstraction::StandardType;
using UIAbstraction::UIElement;
using UIAbstraction::UIEvent;

namespace {

/** Enough for all records but those of elements with much text or many below them. */
constexpr int usualSize = 512;

void writeFields(PayloadWriter& writer, const UIElement& element) {
    writer << element.id() << element.standardType() << element.concreteType()
           << element.extraString3() << element.extraString4();
    const QStringList extraStrings = element.extraStrings();
    writer << static_cast<qint32>(extraStrings.size());
    for (const QString& text : extraStrings) {
        writer << text;
    }
    writer << element.isTransparentNode() << element.isSubgraphTransparent()
           << element.isWindowNode() << element.text() << element.geometry() << element.image()
           << element.extraString1() << element.extraString2() << element.extraAttributes1()
           << element.extraAttributes2();
    const QMap<UIEvent, int> usage = element.usage();
    writer << static_cast<qint32>(usage.size());
    for (auto it = usage.cbegin(); it != usage.cend(); ++it) {
        writer << it.key() << static_cast<qint32>(it.value());
    }
}

} // namespace

PayloadWriter::PayloadWriter(QByteArray memory)
    : m_memory(std::move(memory)) {
    if (!m_memory.isDetached()) {
        m_memory = QByteArray();
    }
    if (m_memory.capacity() < usualSize) {
        m_memory.reserve(usualSize);
    }
    findMemory();
}

QByteArray PayloadWriter::take() {
    m_memory.resize(m_size);
    return std::move(m_memory);
}

void PayloadWriter::grow(int bytes) {
    m_memory.resize(m_size);
    m_memory.reserve(qMax(2 * m_capacity, m_size + bytes));
    findMemory();
}

void PayloadWriter::findMemory() {
    m_begin = m_memory.data();
    m_capacity = m_memory.capacity();
}

void PayloadWriter::append(const QByteArray& bytes) {
    std::memcpy(extend(bytes.size()), bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

PayloadWriter& PayloadWriter::operator<<(bool value) {
    *extend(1) = value ? 1 : 0;
    return *this;
}

PayloadWriter& PayloadWriter::operator<<(qint32 value) {
    qToBigEndian(value, extend(sizeof value));
    return *this;
}

PayloadWriter& PayloadWriter::operator<<(qint64 value) {
    qToBigEndian(value, extend(sizeof value));
    return *this;
}

PayloadWriter& PayloadWriter::operator<<(const QByteArray& bytes) {
    if (bytes.isNull()) {
        qToBigEndian(nullText, extend(sizeof nullText));
        return *this;
    }
    *this << static_cast<qint32>(bytes.size());
    append(bytes);
    return *this;
}

PayloadWriter& PayloadWriter::operator<<(const QString& text) {
    if (text.isNull()) {
        qToBigEndian(nullText, extend(sizeof nullText));
        return *this;
    }
    const int units = text.size();
    const auto length = static_cast<quint32>(units) * quint32{sizeof(QChar)};
    char* target = extend(static_cast<int>(sizeof length + length));
    qToBigEndian(length, target);
    target += sizeof length;
    const ushort* const source = text.utf16();
    for (int i = 0; i < units; ++i) {
        qToBigEndian(source[i], target + static_cast<std::size_t>(i) * sizeof(QChar));
    }
    return *this;
}

PayloadWriter& PayloadWriter::operator<<(const QRect& rectangle) {
    return *this << rectangle.left() << rectangle.top() << rectangle.right() << rectangle.bottom();
}

PayloadWriter& PayloadWriter::operator<<(const QImage& image) {
    if (image.isNull()) {
        return *this << qint32{0};
    }
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    writeImage(stream, image);
    append(bytes);
    return *this;
}

PayloadWriter& PayloadWriter::operator<<(const QHash<QString, QString>& attributes) {
    // In the order of the hash; QDataStream writes the entries in the opposite order. The format
    // has none.
    *this << static_cast<qint32>(attributes.size());
    for (auto it = attributes.cbegin(); it != attributes.cend(); ++it) {
        *this << it.key() << it.value();
    }
    return *this;
}

PayloadWriter& PayloadWriter::operator<<(const UIEvent& event) {
    return *this << event.name();
}

PayloadWriter& PayloadWriter::operator<<(const StandardType& type) {
    return *this << type.name();
}

PayloadWriter& PayloadWriter::operator<<(const ElementGeometry& geometry) {
    return *this << geometry.rect() << geometry.isValid();
}

PayloadWriter& PayloadWriter::operator<<(const UIElement& element) {
    ElementWalk walk(&element);
    while (const UIElement* next = walk.next()) {
        writeFields(*this, *next);
        *this << static_cast<qint32>(walk.childCount());
    }
    return *this;
}

} // namespace RecordStream
} // namespace Vorsk
