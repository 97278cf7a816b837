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

QString ByteCursor::readStreamedText() {
    constexpr quint32 null = 0xFFFFFFFF;
    const quint32 length = readUInt32();
    if (length == null || !m_isOk) {
        return {};
    }
    if (length > static_cast<quint32>(remaining()) || length % sizeof(ushort) != 0) {
        m_isOk = false;
        return {};
    }
    const auto units = static_cast<int>(length / sizeof(ushort));
    if (units == 0) {
        return QStringLiteral("");
    }
    QString text(units, Qt::Uninitialized);
    const char* const source = m_bytes.constData() + m_position;
    auto* const target = reinterpret_cast<ushort*>(text.data());
    for (int i = 0; i < units; ++i) {
        target[i] = qFromBigEndian<ushort>(source + static_cast<std::size_t>(i) * sizeof(ushort));
    }
    m_position += static_cast<int>(length);
    return text;
}

QByteArray ByteCursor::readRest() {
    QByteArray result = m_bytes.mid(m_position);
    m_position = m_bytes.size();
    return result;
}

} // namespace Uicov::Recording
