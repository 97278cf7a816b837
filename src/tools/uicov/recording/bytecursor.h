#pragma once

#include <QByteArray>
#include <QString>

namespace Uicov::Recording {

/**
 * Takes big-endian values off the front of a frame's bytes. After the first value that is not all
 * there, every further one is zero or empty and ok() is false: check once, at the end.
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
