// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/recordingbuilder.h"

#include "recordstream/elementstream.h"

#include <QDataStream>
#include <QFile>
#include <QtEndian>

#include <zlib.h>

namespace TestLib {

using Vorsk::RecordStream::RecordKind;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace {

template <class Integer>
QByteArray bigEndian(Integer value) {
    QByteArray bytes(sizeof value, Qt::Uninitialized);
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray counted(const QByteArray& bytes) {
    return bigEndian(static_cast<quint32>(bytes.size())) + bytes;
}

QByteArray integerArgument(qint32 value) {
    return bigEndian(quint8{1}) + bigEndian(value);
}

} // namespace

RecordingBuilder::RecordingBuilder()
    : m_bytes(QByteArray(RecordingFormat::magic, sizeof RecordingFormat::magic) +
              bigEndian(RecordingFormat::plainVersion)) {}

RecordingBuilder::~RecordingBuilder() {
    for (const QPointer<UIElement>& element : m_elements) {
        delete element; // takes all below along, whose pointers are null then
    }
}

QByteArray RecordingBuilder::text(const QString& text) {
    return counted(text.toUtf8());
}

void RecordingBuilder::addFrame(quint8 type, const QByteArray& body) {
    const QByteArray payload = bigEndian(type) + bigEndian(m_time) + body;
    const uLong checksum = crc32(0, reinterpret_cast<const Bytef*>(payload.constData()),
                                 static_cast<uInt>(payload.size()));
    m_bytes += bigEndian(static_cast<quint32>(payload.size())) +
               bigEndian(static_cast<quint32>(checksum)) + payload;
}

void RecordingBuilder::addProcess(const QMap<QString, QString>& info) {
    QByteArray body = bigEndian(static_cast<quint32>(info.size()));
    for (auto it = info.cbegin(); it != info.cend(); ++it) {
        body += text(it.key()) + text(it.value());
    }
    addFrame(1, body);
}

void RecordingBuilder::addLog(RecordingFormat::Severity severity, const QString& line) {
    addFrame(3, bigEndian(static_cast<quint8>(severity)) + text(line));
}

void RecordingBuilder::addMark(const QString& name) {
    addFrame(4, text(name));
}

void RecordingBuilder::addEnd() {
    addEnd(m_messages);
}

void RecordingBuilder::addEnd(quint64 count) {
    addFrame(5, bigEndian(count));
}

void RecordingBuilder::addRecord(int kind, const QByteArray& payload) {
    ++m_messages;
    addFrame(2, bigEndian(qint32{7}) + text(QStringLiteral("uiCoverageData")) +
                    bigEndian(quint8{4}) + integerArgument(4711) + integerArgument(1) +
                    integerArgument(kind) + bigEndian(quint8{2}) + counted(payload));
}

void RecordingBuilder::addMessage(const QString& name, const QList<qint32>& arguments) {
    ++m_messages;
    QByteArray body =
        bigEndian(qint32{7}) + text(name) + bigEndian(static_cast<quint8>(arguments.size()));
    for (const qint32 argument : arguments) {
        body += integerArgument(argument);
    }
    addFrame(2, body);
}

template <class... Items>
void RecordingBuilder::send(RecordKind kind, const UIElement* element, const Items&... items) {
    addRecord(static_cast<int>(kind), payload(element->id(), items...));
}

void RecordingBuilder::announce(UIElement* element) {
    m_elements.emplace_back(element);
    connect(element, &UIElement::childAdded, this, [this](const auto* parent, const auto* child) {
        send(RecordKind::ChildAdded, parent, child->id());
    });
    connect(element, &UIElement::eventRegistered, this,
            [this](const auto* from, const UIEvent& event) {
                send(RecordKind::EventRegistered, from, event);
            });
    connect(element, &UIElement::geometryChanged, this,
            [this](const auto* from, const ElementGeometry& geometry) {
                send(RecordKind::GeometryChanged, from, geometry.rect());
            });
    connect(element, &UIElement::imageChanged, this, [this](const auto* from, const QImage& image) {
        send(RecordKind::ImageChanged, from, image);
    });
    connect(element, &UIElement::standardTypeChanged, this,
            [this](const auto* from, const StandardType& type) {
                send(RecordKind::StandardTypeChanged, from, type);
            });
    connect(element, &UIElement::textChanged, this, [this](const auto* from, const QString& value) {
        send(RecordKind::TextChanged, from, value);
    });
    connect(element, &UIElement::transparentNodeChanged, this,
            [this](const auto* from, bool value) {
                send(RecordKind::TransparentNodeChanged, from, value);
            });
    connect(element, &UIElement::subgraphTransparentChanged, this,
            [this](const auto* from, bool value) {
                send(RecordKind::SubgraphTransparentChanged, from, value);
            });
    connect(element, &UIElement::windowNodeChanged, this, [this](const auto* from, bool value) {
        send(RecordKind::WindowNodeChanged, from, value);
    });
    connect(element, &UIElement::usageIncreased, this,
            [this](const auto* from, const UIEvent& event, int usage) {
                send(RecordKind::UsageIncreased, from, event, static_cast<qint32>(usage));
            });
    connect(element, &UIElement::attributeChanged, this,
            [this](const auto* from, const QString& name, const QString& value) {
                send(RecordKind::AttributeChanged, from, name, value);
            });
    send(RecordKind::ElementAdded, element, *element);
}

UIElement* RecordingBuilder::add(UIElement* parent, const QString& standardType,
                                 const QString& concreteType, const QString& elementText,
                                 const QStringList& events) {
    auto* const element = new UIElement(concreteType, StandardType(standardType), QString());
    if (!elementText.isNull()) {
        element->setText(elementText);
    }
    for (const QString& event : events) {
        element->registerEvent(UIEvent(event));
    }
    announce(element);
    if (parent != nullptr) {
        parent->addChild(element);
    }
    return element;
}

bool RecordingBuilder::write(const QString& path) const {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(m_bytes) == m_bytes.size();
}

} // namespace TestLib
