#include "uiabstraction/elementstream.h"

#include "uiabstraction/elementwalk.h"
#include "uiabstraction/recordkind.h"
#include "uiabstraction/uielement.h"

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

#include <cstring>
#include <utility>
#include <vector>

namespace Vorsk {
namespace UIAbstraction {

namespace {

void writeFields(QDataStream& stream, const UIElement& element) {
    stream << element.id() << element.standardType() << element.concreteType()
           << element.extraString3() << element.extraString4() << element.extraStrings()
           << element.isTransparentNode() << element.isSubgraphTransparent()
           << element.isWindowNode() << element.text() << element.geometry() << element.image()
           << element.extraString1() << element.extraString2() << element.extraAttributes1()
           << element.extraAttributes2();
    const QMap<UIEvent, int> usage = element.usage();
    stream << static_cast<qint32>(usage.size());
    for (auto it = usage.cbegin(); it != usage.cend(); ++it) {
        stream << it.key() << static_cast<qint32>(it.value());
    }
}

/** A number of things to come; -1, with the status set, when there cannot be that many. */
qint32 readCount(QDataStream& stream) {
    qint32 count = -1;
    stream >> count;
    if (stream.status() == QDataStream::Ok && count < 0) {
        stream.setStatus(QDataStream::ReadCorruptData);
    }
    return stream.status() == QDataStream::Ok ? count : -1;
}

} // namespace

/** Fills elements from a stream, directly and without their signals. */
class ElementReader {
public:
    explicit ElementReader(QDataStream& stream)
        : m_stream(stream) {}

    std::unique_ptr<UIElement> read() {
        // One level for each element whose children are being read: nesting costs memory, not
        // stack.
        std::vector<Level> path;
        path.push_back(readLevel());
        while (m_stream.status() == QDataStream::Ok) {
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
        auto element =
            std::make_unique<UIElement>(QStringLiteral("unknown"), StandardType(), QString());
        m_stream >> element->m_id >> element->m_standardType >> element->m_concreteType >>
            element->m_extraString3 >> element->m_extraString4;
        readExtraStrings(*element);
        m_stream >> element->m_isTransparentNode >> element->m_isSubgraphTransparent >>
            element->m_isWindowNode >> element->m_text >> element->m_geometry;
        readImage(m_stream, element->m_image);
        m_stream >> element->m_extraString1 >> element->m_extraString2 >>
            element->m_extraAttributes1 >> element->m_extraAttributes2;
        readUsage(*element);
        const qint32 children = readCount(m_stream);
        return {std::move(element), children};
    }

    void readExtraStrings(UIElement& element) {
        const qint32 count = readCount(m_stream);
        for (qint32 i = 0; i < count && m_stream.status() == QDataStream::Ok; ++i) {
            QString text;
            m_stream >> text;
            element.m_extraStrings.append(text);
        }
    }

    void readUsage(UIElement& element) {
        const qint32 count = readCount(m_stream);
        for (qint32 i = 0; i < count && m_stream.status() == QDataStream::Ok; ++i) {
            UIEvent event;
            qint32 usage = 0;
            m_stream >> event >> usage;
            element.m_usage.insert(event, usage);
        }
    }

    QDataStream& m_stream;
};

QDataStream& operator<<(QDataStream& stream, const UIElement& element) {
    ElementWalk walk(&element);
    while (const UIElement* next = walk.next()) {
        writeFields(stream, *next);
        stream << static_cast<qint32>(walk.childCount());
    }
    return stream;
}

std::unique_ptr<UIElement> readElement(QDataStream& stream) {
    if (stream.status() != QDataStream::Ok) {
        return nullptr;
    }
    return ElementReader(stream).read();
}

QList<UIElement*> readElements(const QByteArray& data, bool* ok) {
    QDataStream stream(data);
    stream.setVersion(streamVersion);
    QList<UIElement*> elements;
    const qint32 count = readCount(stream);
    for (qint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        std::unique_ptr<UIElement> element = readElement(stream);
        if (element) {
            elements.append(element.release());
        }
    }
    if (ok != nullptr) {
        *ok = stream.status() == QDataStream::Ok;
    }
    return elements;
}

bool readImage(QDataStream& stream, QImage& image) {
    constexpr char pngSignature[] = "\x89PNG\r\n\x1a\n";
    constexpr int widthOffset = 16; // behind the signature, the first chunk's length and its name
    constexpr int heightOffset = 20;
    constexpr int sizeEnd = 24;

    image = QImage();
    qint32 marker = 0;
    stream >> marker;
    if (stream.status() != QDataStream::Ok || marker == 0) {
        return stream.status() == QDataStream::Ok;
    }
    const QByteArray start = stream.device()->peek(sizeEnd);
    if (start.size() < sizeEnd ||
        std::memcmp(start.constData(), pngSignature, sizeof pngSignature - 1) != 0) {
        stream.setStatus(QDataStream::ReadCorruptData);
        return false;
    }
    const qint64 width = qFromBigEndian<quint32>(start.constData() + widthOffset);
    const qint64 height = qFromBigEndian<quint32>(start.constData() + heightOffset);
    if (width * height > maximumImagePixels || !image.load(stream.device(), "PNG")) {
        image = QImage();
        stream.setStatus(QDataStream::ReadCorruptData);
        return false;
    }
    return true;
}

} // namespace UIAbstraction
} // namespace Vorsk
