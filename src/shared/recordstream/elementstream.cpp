// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recordstream/elementstream.h"

#include "recordstream/payloadreader.h"
#include "recordstream/payloadwriter.h"
#include "recordstream/pngreader.h"
#include "recordstream/recordkind.h"
#include "uiabstraction/uielement.h"

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>

#include <utility>
#include <vector>

namespace Vorsk {
namespace UIAbstraction {

QDataStream& operator<<(QDataStream& stream, const UIElement& element) {
    RecordStream::PayloadWriter writer;
    writer << element;
    const QByteArray bytes = writer.payload();
    stream.writeRawData(bytes.constData(), bytes.size());
    return stream;
}

} // namespace UIAbstraction

namespace RecordStream {

using UIAbstraction::Extent;
using UIAbstraction::HitIndex;
using UIAbstraction::StandardType;
using UIAbstraction::UIElement;
using UIAbstraction::UIEvent;

namespace {

bool isSound(const QDataStream& stream) {
    return stream.status() == QDataStream::Ok;
}

bool isSound(const PayloadReader& reader) {
    return reader.isSound();
}

void setDamaged(QDataStream& stream) {
    stream.setStatus(QDataStream::ReadCorruptData);
}

void setDamaged(PayloadReader& reader) {
    reader.setDamaged();
}

void readValue(QDataStream& stream, QImage& image) {
    readImage(stream, image);
}

template <class Stream, class Value>
void readValue(Stream& stream, Value& value) {
    stream >> value;
}

/** Reads the values in order up to the first error: a damaged stream reads on when it is let. */
template <class Stream, class... Values>
bool read(Stream& stream, Values&... values) {
    return (... && (isSound(stream) && (readValue(stream, values), isSound(stream))));
}

/** A number of things to come; -1, with the stream damaged, when there cannot be that many. */
template <class Stream>
qint32 readCount(Stream& stream) {
    qint32 count = -1;
    if (read(stream, count) && count < 0) {
        setDamaged(stream);
    }
    return isSound(stream) ? count : -1;
}

} // namespace

/** Fills elements from a stream, directly and without their signals. */
template <class Stream>
class ElementReader {
public:
    explicit ElementReader(Stream& stream)
        : m_stream(stream) {}

    std::unique_ptr<UIElement> readTree() {
        // One level for each element whose children are being read: nesting costs memory, not
        // stack.
        std::vector<Level> path;
        path.push_back(readLevel());
        while (isSound(m_stream)) {
            if (path.back().childrenToCome > 0) {
                --path.back().childrenToCome;
                path.push_back(readLevel());
                continue;
            }
            std::unique_ptr<UIElement> complete = std::move(path.back().element);
            path.pop_back();
            if (path.empty()) {
                return complete;
            }
            path.back().element->addChild(complete.release());
        }
        return nullptr;
    }

private:
    struct Level {
        std::unique_ptr<UIElement> element;
        qint32 childrenToCome;
    };

    Level readLevel() {
        // Every field is about to be overwritten; an id that is given need not be made up.
        const QString unknown = QStringLiteral("unknown");
        auto element = std::make_unique<UIElement>(unknown, StandardType(), unknown);
        UIElement& e = *element;
        UIElement::Extras extras;
        const bool isComplete =
            read(m_stream, e.m_id, e.m_standardType, e.m_concreteType, extras.string3,
                 extras.string4) &&
            readStrings(extras.strings) &&
            read(m_stream, e.m_isTransparentNode, e.m_isSubgraphTransparent, e.m_isWindowNode,
                 e.m_text, e.m_geometry, e.m_image, extras.string1, extras.string2,
                 extras.attributes1, extras.attributes2) &&
            readUsage(e);
        e.setExtras(std::move(extras));
        HitIndex::cover(e, Extent(e.m_geometry.rect()));
        return {std::move(element), isComplete ? readCount(m_stream) : 0};
    }

    bool readStrings(QStringList& strings) {
        // Each text is looked for before there is a place for it: the count may be damaged.
        for (qint32 count = readCount(m_stream); count > 0; --count) {
            QString text;
            if (!read(m_stream, text)) {
                break;
            }
            strings.append(text);
        }
        return isSound(m_stream);
    }

    bool readUsage(UIElement& element) {
        for (qint32 count = readCount(m_stream); count > 0; --count) {
            UIEvent event;
            qint32 usage = 0;
            if (!read(m_stream, event, usage)) {
                break;
            }
            element.m_usage[event] = usage;
        }
        return isSound(m_stream);
    }

    Stream& m_stream;
};

std::unique_ptr<UIElement> readElement(QDataStream& stream) {
    return isSound(stream) ? ElementReader<QDataStream>(stream).readTree() : nullptr;
}

std::unique_ptr<UIElement> readElement(PayloadReader& reader) {
    return isSound(reader) ? ElementReader<PayloadReader>(reader).readTree() : nullptr;
}

QList<UIElement*> readElements(const QByteArray& data, bool* ok) {
    PayloadReader reader(data);
    QList<UIElement*> elements;
    const qint32 count = readCount(reader);
    for (qint32 i = 0; i < count && reader.isSound(); ++i) {
        std::unique_ptr<UIElement> element = readElement(reader);
        if (element) {
            elements.append(element.release());
        }
    }
    if (ok != nullptr) {
        *ok = reader.isSound();
    }
    return elements;
}

bool readImage(QDataStream& stream, QImage& image) {
    image = QImage();
    qint32 marker = 0;
    if (read(stream, marker) && marker != 0) {
        image = readPng(*stream.device());
        if (image.isNull()) {
            stream.setStatus(QDataStream::ReadCorruptData);
        }
    }
    return isSound(stream);
}

} // namespace RecordStream
} // namespace Vorsk
