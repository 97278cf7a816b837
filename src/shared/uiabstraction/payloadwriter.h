#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVarLengthArray>
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

/**
 * Writes what a QDataStream of the model's version writes, byte for byte, for the few types that
 * records are made of and without a device behind it: small records cost one allocation, that of
 * the result. A plain value, made for one payload.
 */
class PayloadWriter {
public:
    PayloadWriter& operator<<(bool value);
    PayloadWriter& operator<<(qint32 value);
    PayloadWriter& operator<<(const QString& text);
    PayloadWriter& operator<<(const QRect& rectangle);
    /** With its PNG made by fastPng() where it can be. */
    PayloadWriter& operator<<(const QImage& image);
    PayloadWriter& operator<<(const QHash<QString, QString>& attributes);
    PayloadWriter& operator<<(const UIEvent& event);
    PayloadWriter& operator<<(const StandardType& type);
    PayloadWriter& operator<<(const ElementGeometry& geometry);
    /** With all below it. */
    PayloadWriter& operator<<(const UIElement& element);

    /** All that was written. */
    QByteArray payload() const { return QByteArray(m_bytes.constData(), m_bytes.size()); }

private:
    /** Where the next bytes go; they have to be filled. */
    char* extend(int bytes);
    void append(const QByteArray& bytes);

    // Enough for all records but those of elements with much text or many below them.
    QVarLengthArray<char, 512> m_bytes;
};

} // namespace UIAbstraction
} // namespace Vorsk
