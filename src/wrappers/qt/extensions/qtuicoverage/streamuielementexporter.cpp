#include "streamuielementexporter.h"

#include "uiabstraction/elementstream.h"
#include "uiabstraction/pngwriter.h"

#include <vorsk/hook.h>

#include <QDataStream>
#include <QIODevice>

namespace Vorsk {
namespace UICoverage {

using UIAbstraction::ElementStore;
using UIAbstraction::RecordKind;
using UIAbstraction::StandardType;
using UIAbstraction::UIElement;
using UIAbstraction::UIEvent;

namespace {

/** An image that is written with the fast PNG. */
struct Picture {
    const QImage& image;
};

QDataStream& operator<<(QDataStream& stream, const Picture& picture) {
    UIAbstraction::writeImage(stream, picture.image);
    return stream;
}

} // namespace

StreamUIElementExporter::StreamUIElementExporter() = default;

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
    exportRecord(RecordKind::ImageChanged, element, Picture{image});
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

template <class... Items>
void StreamUIElementExporter::exportRecord(RecordKind kind, const UIElement* element,
                                           const Items&... items) {
    Record record{kind, QByteArray()};
    {
        QDataStream stream(&record.payload, QIODevice::WriteOnly);
        stream.setVersion(UIAbstraction::streamVersion);
        stream << element->id();
        (stream << ... << items);
    }
    deliver(record);
}

void StreamUIElementExporter::deliver(const Record& record) {
    m_pending.enqueue(record);
    // The hook is looked at anew for every message: the host may make it, or take it away, at any
    // time.
    while (Hook::hook != nullptr && !m_pending.isEmpty()) {
        const Record next = m_pending.dequeue();
        Hook* const hook = Hook::hook;
        hook->send(hook->channel, QLatin1String(UIAbstraction::coverageMessageName),
                   ArgumentList{hook->appId(), 1, static_cast<int>(next.kind), next.payload});
    }
}

} // namespace UICoverage
} // namespace Vorsk
