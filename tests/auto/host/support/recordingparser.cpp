// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "host/support/recordingparser.h"

#include <QDataStream>
#include <QFile>

namespace {

/** Takes values off the front of some bytes; anything that is not there makes it bad. */
class Cursor {
public:
    explicit Cursor(const QByteArray& bytes)
        : m_rest(bytes) {}

    quint64 number(int width) {
        quint64 value = 0;
        for (const char byte : take(width)) {
            value = (value << 8U) | static_cast<unsigned char>(byte);
        }
        return value;
    }

    QByteArray take(int length) {
        if (length < 0 || length > m_rest.size()) {
            m_good = false;
            return {};
        }
        QByteArray result = m_rest.left(length);
        m_rest = m_rest.mid(length);
        return result;
    }

    QByteArray counted() { return take(static_cast<int>(number(4))); }
    QString text() { return QString::fromUtf8(counted()); }
    bool isAtEnd() const { return m_good && m_rest.isEmpty(); }
    bool isGood() const { return m_good; }

private:
    QByteArray m_rest;
    bool m_good = true;
};

/** CRC-32 as it is defined, one bit after the other. */
quint32 checksum(const QByteArray& bytes) {
    quint32 value = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        value ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            value = (value >> 1U) ^ ((value & 1U) != 0 ? 0xEDB88320U : 0U);
        }
    }
    return ~value;
}

QVariant argument(Cursor& cursor) {
    const quint64 tag = cursor.number(1);
    if (tag == 1) {
        return static_cast<qint32>(cursor.number(4));
    }
    const QByteArray bytes = cursor.counted();
    if (tag == 2) {
        return bytes;
    }
    QDataStream stream(bytes);
    stream.setVersion(12);
    QVariant value;
    stream >> value;
    return tag == 3 ? value : QVariant(QStringLiteral("unknown tag"));
}

QByteArray bodyOf(const QList<RecordingParser::Frame>& frames, int type) {
    for (const auto& frame : frames) {
        if (frame.type == type) {
            return frame.body;
        }
    }
    return {};
}

} // namespace

RecordingParser RecordingParser::parse(const QByteArray& bytes) {
    RecordingParser result;
    if (!bytes.startsWith("UIREC\r\n\x1a")) {
        result.error = QStringLiteral("no magic");
        return result;
    }
    Cursor cursor(bytes.mid(8));
    const quint64 version = cursor.number(4);
    if (version == 2) {
        cursor.take(4);
        result.end = static_cast<qint64>(cursor.number(8));
        cursor.take(16);
    } else if (version != 1) {
        result.error = QStringLiteral("wrong version");
        return result;
    }
    int place = version == 2 ? 40 : 12;
    while (!cursor.isAtEnd()) {
        if (version == 2 && place == result.end &&
            bytes.mid(place).count('\0') == bytes.size() - place) {
            return result; // room for what comes next
        }
        const auto length = static_cast<int>(cursor.number(4));
        place += 8 + length;
        const auto expected = static_cast<quint32>(cursor.number(4));
        const QByteArray payload = cursor.take(length);
        if (!cursor.isGood() || length < 9 || checksum(payload) != expected) {
            result.error = QStringLiteral("frame %1 is torn or damaged").arg(result.frames.size());
            return result;
        }
        Cursor inner(payload);
        const auto type = static_cast<int>(inner.number(1));
        const quint64 time = inner.number(8);
        result.frames.append({type, time, payload.mid(9)});
    }
    return result;
}

RecordingParser RecordingParser::parseFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        RecordingParser result;
        result.error = QStringLiteral("cannot open ") + path;
        return result;
    }
    return parse(file.readAll());
}

QVector<QPair<QString, QString>> RecordingParser::processInfo() const {
    QVector<QPair<QString, QString>> result;
    Cursor cursor(bodyOf(frames.mid(0, 1), 1));
    const quint64 count = cursor.number(4);
    for (quint64 i = 0; i < count && cursor.isGood(); ++i) {
        const QString key = cursor.text();
        result.append({key, cursor.text()});
    }
    return cursor.isAtEnd() ? result : QVector<QPair<QString, QString>>();
}

QString RecordingParser::processValue(const QString& key) const {
    const auto info = processInfo();
    for (const auto& entry : info) {
        if (entry.first == key) {
            return entry.second;
        }
    }
    return {};
}

QList<RecordingParser::Message> RecordingParser::messages() const {
    QList<Message> result;
    for (const Frame& frame : frames) {
        if (frame.type != 2) {
            continue;
        }
        Cursor cursor(frame.body);
        Message message;
        message.channel = static_cast<qint32>(cursor.number(4));
        message.name = cursor.text();
        const quint64 count = cursor.number(1);
        for (quint64 i = 0; i < count; ++i) {
            message.arguments.append(argument(cursor));
        }
        if (!cursor.isAtEnd()) {
            message.name = QStringLiteral("damaged");
        }
        result.append(message);
    }
    return result;
}

QStringList RecordingParser::logs() const {
    QStringList result;
    for (const Frame& frame : frames) {
        if (frame.type == 3) {
            Cursor cursor(frame.body);
            const quint64 severity = cursor.number(1);
            result.append((severity == 1 ? QStringLiteral("info ") : QStringLiteral("warning ")) +
                          cursor.text());
        }
    }
    return result;
}

bool RecordingParser::hasEnd() const {
    return !frames.isEmpty() && frames.last().type == 5;
}

qint64 RecordingParser::messagesAccordingToEnd() const {
    return hasEnd() ? static_cast<qint64>(Cursor(frames.last().body).number(8)) : -1;
}
