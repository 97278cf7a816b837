// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QtEndian>

QT_BEGIN_NAMESPACE
class QImage;
class QRect;
QT_END_NAMESPACE

namespace Vorsk {

namespace UIAbstraction {
class ElementGeometry;
class StandardType;
class UIElement;
class UIEvent;
} // namespace UIAbstraction

namespace RecordStream {

/**
 * Writes what a QDataStream of the model's version writes, byte for byte but for the order of
 * attributes, for the few types that records are made of and without a device behind it. Made for
 * one payload; small ones cost one allocation, or none in memory that comes back.
 */
class PayloadWriter {
public:
    /** @param memory what an earlier one took(); used again when nobody else has it */
    explicit PayloadWriter(QByteArray memory = QByteArray());
    Q_DISABLE_COPY(PayloadWriter)

    PayloadWriter& operator<<(bool value);
    PayloadWriter& operator<<(qint32 value);
    PayloadWriter& operator<<(qint64 value);
    PayloadWriter& operator<<(const QString& text);
    PayloadWriter& operator<<(const QByteArray& bytes);
    PayloadWriter& operator<<(const QRect& rectangle);
    /** With its PNG made by fastPng() where it can be. */
    PayloadWriter& operator<<(const QImage& image);
    PayloadWriter& operator<<(const QHash<QString, QString>& attributes);
    PayloadWriter& operator<<(const UIAbstraction::UIEvent& event);
    PayloadWriter& operator<<(const UIAbstraction::StandardType& type);
    PayloadWriter& operator<<(const UIAbstraction::ElementGeometry& geometry);
    /** With all below it. */
    PayloadWriter& operator<<(const UIAbstraction::UIElement& element);

    /** Bytes that were written. */
    int size() const { return m_size; }
    /** All that was written. */
    QByteArray payload() const { return {m_begin, m_size}; }
    /** The same without a copy; the last thing to ask for. */
    QByteArray take();

private:
    /** Where the next bytes go; they have to be filled. */
    char* extend(int bytes) {
        if (bytes > m_capacity - m_size) {
            grow(bytes);
        }
        char* const target = m_begin + m_size;
        m_size += bytes;
        return target;
    }
    void grow(int bytes);
    void findMemory();
    void append(const QByteArray& bytes);

    QByteArray m_memory;
    char* m_begin = nullptr;
    int m_capacity = 0;
    int m_size = 0;
};

} // namespace RecordStream
} // namespace Vorsk
