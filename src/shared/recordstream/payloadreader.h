// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

QT_BEGIN_NAMESPACE
class QImage;
class QRect;
QT_END_NAMESPACE

namespace Vorsk {

namespace UIAbstraction {
class ElementGeometry;
class StandardType;
class UIEvent;
} // namespace UIAbstraction

namespace RecordStream {

/**
 * Reads what a QDataStream of the model's version reads, for the few types that records are made
 * of and without a device behind it. After the first value that is not all there or not what it
 * claims to be, every further one is empty and isSound() is false.
 */
class PayloadReader {
public:
    explicit PayloadReader(const QByteArray& payload);

    PayloadReader& operator>>(bool& value);
    PayloadReader& operator>>(qint32& value);
    PayloadReader& operator>>(QString& text);
    PayloadReader& operator>>(QRect& rectangle);
    /** As readImage() does. */
    PayloadReader& operator>>(QImage& image);
    PayloadReader& operator>>(QHash<QString, QString>& attributes);
    PayloadReader& operator>>(UIAbstraction::UIEvent& event);
    PayloadReader& operator>>(UIAbstraction::StandardType& type);
    PayloadReader& operator>>(UIAbstraction::ElementGeometry& geometry);

    /** All that is left. */
    QByteArray takeRest();

    bool isSound() const { return m_isSound; }
    bool isAtSoundEnd() const { return m_isSound && m_position == m_payload.size(); }
    void setDamaged() { m_isSound = false; }

private:
    /** The next bytes; null when there are not that many. */
    const char* take(quint32 bytes);
    /** For what is rare and Qt's own business. */
    template <class Read>
    void readByStream(Read read);

    QByteArray m_payload;
    int m_position = 0;
    bool m_isSound = true;
};

} // namespace RecordStream
} // namespace Vorsk
