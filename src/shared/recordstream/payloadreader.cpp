// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordstream/payloadreader.h"

#include "recordstream/elementstream.h"
#include "recordstream/recordkind.h"
#include "uiabstraction/elementgeometry.h"
#include "uiabstraction/standardtype.h"
#include "uiabstraction/uievent.h"

#include <QDataStream>
#include <QImage>
#include <QRect>
#include <QtEndian>

namespace Vorsk {
namespace RecordStream {

using UIAbstraction::ElementGeometry;
using UIAbstraction::StandardType;
using UIAbstraction::UIEvent;

PayloadReader::PayloadReader(const QByteArray& payload)
    : m_payload(payload) {}

const char* PayloadReader::take(quint32 bytes) {
    if (!m_isSound || bytes > static_cast<quint32>(m_payload.size() - m_position)) {
        m_isSound = false;
        return nullptr;
    }
    const char* const start = m_payload.constData() + m_position;
    m_position += static_cast<int>(bytes);
    return start;
}

QByteArray PayloadReader::takeRest() {
    QByteArray rest = m_payload.mid(m_position);
    m_position = m_payload.size();
    return rest;
}

PayloadReader& PayloadReader::operator>>(bool& value) {
    const char* const byte = take(1);
    value = byte != nullptr && *byte != 0;
    return *this;
}

PayloadReader& PayloadReader::operator>>(qint32& value) {
    const char* const bytes = take(sizeof value);
    value = bytes != nullptr ? qFromBigEndian<qint32>(bytes) : 0;
    return *this;
}

PayloadReader& PayloadReader::operator>>(QString& text) {
    qint32 number = 0;
    *this >> number;
    const auto length = static_cast<quint32>(number);
    if (length == nullText || !m_isSound) {
        text = QString();
        return *this;
    }
    const char* const source = length % sizeof(ushort) == 0 ? take(length) : nullptr;
    if (source == nullptr) {
        m_isSound = false;
        text = QString();
        return *this;
    }
    const auto units = static_cast<int>(length / sizeof(ushort));
    if (units == 0) {
        text = QStringLiteral("");
        return *this;
    }
    text = QString(units, Qt::Uninitialized);
    auto* const target = reinterpret_cast<ushort*>(text.data());
    for (int i = 0; i < units; ++i) {
        target[i] = qFromBigEndian<ushort>(source + static_cast<std::size_t>(i) * sizeof(ushort));
    }
    return *this;
}

PayloadReader& PayloadReader::operator>>(QRect& rectangle) {
    qint32 left = 0;
    qint32 top = 0;
    qint32 right = 0;
    qint32 bottom = 0;
    *this >> left >> top >> right >> bottom;
    rectangle = QRect();
    if (m_isSound) {
        rectangle.setCoords(left, top, right, bottom);
    }
    return *this;
}

template <class Read>
void PayloadReader::readByStream(Read read) {
    if (!m_isSound) {
        return;
    }
    QDataStream stream(
        QByteArray::fromRawData(m_payload.constData() + m_position, m_payload.size() - m_position));
    stream.setVersion(streamVersion);
    read(stream);
    m_isSound = stream.status() == QDataStream::Ok;
    m_position += static_cast<int>(stream.device()->pos());
}

PayloadReader& PayloadReader::operator>>(QImage& image) {
    image = QImage();
    const int start = m_position;
    qint32 marker = 0;
    *this >> marker;
    if (marker != 0) {
        m_position = start;
        readByStream([&image](QDataStream& stream) { readImage(stream, image); });
    }
    return *this;
}

PayloadReader& PayloadReader::operator>>(QHash<QString, QString>& attributes) {
    attributes.clear();
    const int start = m_position;
    qint32 count = 0;
    *this >> count;
    if (count != 0) {
        m_position = start;
        readByStream([&attributes](QDataStream& stream) { stream >> attributes; });
    }
    return *this;
}

PayloadReader& PayloadReader::operator>>(UIEvent& event) {
    QString name;
    *this >> name;
    event = UIEvent(name);
    return *this;
}

PayloadReader& PayloadReader::operator>>(StandardType& type) {
    QString name;
    *this >> name;
    type = StandardType(name);
    return *this;
}

PayloadReader& PayloadReader::operator>>(ElementGeometry& geometry) {
    QRect rectangle;
    bool isValid = false;
    *this >> rectangle >> isValid;
    geometry = ElementGeometry(rectangle, isValid);
    return *this;
}

} // namespace RecordStream
} // namespace Vorsk
