// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/streamuielementexporter.h"

#include "recordstream/payloadwriter.h"

#include <vorsk/hook.h>

#include <QVariant>

#include <utility>

namespace Vorsk {
namespace UICoverage {

using RecordStream::PayloadWriter;
using RecordStream::RecordKind;
using UIAbstraction::ElementStore;
using UIAbstraction::StandardType;
using UIAbstraction::UIElement;
using UIAbstraction::UIEvent;

namespace {

/** Bytes of a payload's memory that are kept for the next one. */
constexpr int keptMemory = 4096;

// A variant that has the type already takes a value at a third of the cost of becoming another one.

void setInteger(QVariant& variant, int value) {
    *static_cast<int*>(variant.data()) = value;
}

void setBytes(QVariant& variant, const QByteArray& value) {
    *static_cast<QByteArray*>(variant.data()) = value;
}

} // namespace

StreamUIElementExporter::StreamUIElementExporter()
    : m_messageName(QLatin1String(RecordStream::coverageMessageName))
    , m_arguments{0, 1, 0, QByteArray()} {}

StreamUIElementExporter::~StreamUIElementExporter() = default;

void StreamUIElementExporter::onElementStoreAdded(const ElementStore* elementStore) {
    const QList<UIElement*> roots = elementStore->rootElements();
    for (const UIElement* root : roots) {
        onElementAdded(root);
    }
}

void StreamUIElementExporter::onElementAdded(const UIElement* element) {
    // The id stands twice: once as every record's first item, once as the element form's.
    exportRecord(RecordKind::ElementAdded, element, *element);
}

void StreamUIElementExporter::onChildAdded(const UIElement* element, const UIElement* child) {
    exportRecord(RecordKind::ChildAdded, element, child->id());
}

void StreamUIElementExporter::onEventRegistered(const UIElement* element, UIEvent event) {
    exportRecord(RecordKind::EventRegistered, element, event);
}

void StreamUIElementExporter::onGeometryChanged(const UIElement* element, QRect geometry) {
    exportRecord(RecordKind::GeometryChanged, element, geometry);
}

void StreamUIElementExporter::onImageChanged(const UIElement* element, QImage image) {
    exportRecord(RecordKind::ImageChanged, element, image);
}

void StreamUIElementExporter::onStandardTypeChanged(const UIElement* element,
                                                    StandardType standardType) {
    exportRecord(RecordKind::StandardTypeChanged, element, standardType);
}

void StreamUIElementExporter::onSubgraphTransparentChanged(const UIElement* element,
                                                           bool isSubgraphTransparent) {
    exportRecord(RecordKind::SubgraphTransparentChanged, element, isSubgraphTransparent);
}

void StreamUIElementExporter::onTextChanged(const UIElement* element, QString text) {
    exportRecord(RecordKind::TextChanged, element, text);
}

void StreamUIElementExporter::onTransparentNodeChanged(const UIElement* element,
                                                       bool isTransparentNode) {
    exportRecord(RecordKind::TransparentNodeChanged, element, isTransparentNode);
}

void StreamUIElementExporter::onUsageIncreased(const UIElement* element, UIEvent event, int usage) {
    exportRecord(RecordKind::UsageIncreased, element, event, static_cast<qint32>(usage));
}

void StreamUIElementExporter::onWindowNodeChanged(const UIElement* element, bool isWindowNode) {
    exportRecord(RecordKind::WindowNodeChanged, element, isWindowNode);
}

void StreamUIElementExporter::onAttributeChanged(const UIElement* element, const QString& name,
                                                 const QString& value) {
    exportRecord(RecordKind::AttributeChanged, element, name, value);
}

template <class... Items>
void StreamUIElementExporter::exportRecord(RecordKind kind, const UIElement* element,
                                           const Items&... items) {
    PayloadWriter writer(std::move(m_memory));
    writer << element->id();
    (writer << ... << items);
    // Whoever keeps payloads should not keep their spare memory.
    deliver({kind, m_isKeptByHost ? writer.payload() : writer.take()});
}

void StreamUIElementExporter::deliver(Record&& record) {
    // The hook is looked at anew for every message: the host may make it, or take it away, at any
    // time.
    if (Hook::hook != nullptr && m_pending.isEmpty()) {
        send(*Hook::hook, record);
        m_isKeptByHost = !record.payload.isDetached();
        if (!m_isKeptByHost && record.payload.capacity() <= keptMemory) {
            m_memory = std::move(record.payload);
        }
        return;
    }
    record.payload.squeeze(); // it may wait for long, with many others
    m_pending.enqueue(std::move(record));
    while (Hook::hook != nullptr && !m_pending.isEmpty()) {
        send(*Hook::hook, m_pending.dequeue());
    }
}

void StreamUIElementExporter::send(Hook& hook, const Record& record) {
    const auto kind = static_cast<int>(record.kind);
    if (m_isSending) {
        // What the host does with a message has led to another one.
        hook.send(hook.channel, m_messageName, {hook.appId(), 1, kind, record.payload});
        return;
    }
    m_isSending = true;
    setInteger(m_arguments[0], hook.appId());
    setInteger(m_arguments[2], kind);
    setBytes(m_arguments[3], record.payload);
    hook.send(hook.channel, m_messageName, m_arguments);
    setBytes(m_arguments[3], QByteArray());
    m_isSending = false;
}

} // namespace UICoverage
} // namespace Vorsk
