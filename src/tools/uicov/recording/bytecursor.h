// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

namespace Uicov::Recording {

/**
 * Reads big-endian values one after the other from the bytes of a frame. Once a value is not all
 * there, each further one is zero or empty and isOk() is false, so one check at the end is enough.
 */
class ByteCursor {
public:
    explicit ByteCursor(QByteArray bytes);

    bool isOk() const { return m_isOk; }
    /** True when all was sound and nothing is left. */
    bool isAtSoundEnd() const { return m_isOk && m_position == m_bytes.size(); }
    int remaining() const { return m_bytes.size() - m_position; }

    quint8 readUInt8();
    quint32 readUInt32();
    qint32 readInt32();
    quint64 readUInt64();
    /** A length (quint32) and that many bytes. */
    QByteArray readBytes();
    /** As readBytes(), read as UTF-8. */
    QString readText();
    /** All that is left. */
    QByteArray readRest();

private:
    template <class Integer>
    Integer read();

    QByteArray m_bytes;
    int m_position = 0;
    bool m_isOk = true;
};

} // namespace Uicov::Recording
