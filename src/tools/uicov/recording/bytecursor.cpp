// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/bytecursor.h"

#include <QtEndian>

#include <utility>

namespace Uicov::Recording {

ByteCursor::ByteCursor(QByteArray bytes)
    : m_bytes(std::move(bytes)) {}

template <class Integer>
Integer ByteCursor::read() {
    if (!m_isOk || remaining() < static_cast<int>(sizeof(Integer))) {
        m_isOk = false;
        return 0;
    }
    const auto value = qFromBigEndian<Integer>(m_bytes.constData() + m_position);
    m_position += static_cast<int>(sizeof(Integer));
    return value;
}

quint8 ByteCursor::readUInt8() {
    return read<quint8>();
}

quint32 ByteCursor::readUInt32() {
    return read<quint32>();
}

qint32 ByteCursor::readInt32() {
    return read<qint32>();
}

quint64 ByteCursor::readUInt64() {
    return read<quint64>();
}

QByteArray ByteCursor::readBytes() {
    const quint32 length = readUInt32();
    if (!m_isOk || length > static_cast<quint32>(remaining())) {
        m_isOk = false;
        return {};
    }
    QByteArray result = m_bytes.mid(m_position, static_cast<int>(length));
    m_position += static_cast<int>(length);
    return result;
}

QString ByteCursor::readText() {
    return QString::fromUtf8(readBytes());
}

QByteArray ByteCursor::readRest() {
    QByteArray result = m_bytes.mid(m_position);
    m_position = m_bytes.size();
    return result;
}

} // namespace Uicov::Recording
