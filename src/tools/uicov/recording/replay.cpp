// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/replay.h"

#include "uiabstraction/elementwalk.h"

#include <QHash>
#include <QSet>
#include <QStringList>

namespace Uicov::Recording {

using Vorsk::RecordStream::RecordKind;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::ElementWalk;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace {

/** Adds everything that can be reached from there and is not in the set yet. */
void addReachable(const UIElement* start, QSet<const UIElement*>& reached) {
    std::vector<const UIElement*> open{start};
    reached.insert(start);
    while (!open.empty()) {
        const QList<UIElement*> children = open.back()->children();
        open.pop_back();
        for (const UIElement* child : children) {
            if (!reached.contains(child)) {
                reached.insert(child);
                open.push_back(child);
            }
        }
    }
}

void setCount(UIElement& element, const UIEvent& event, int count) {
    // The application may count an event that it never registered; the model would warn here.
    element.registerEvent(event);
    element.setUsage(event, count);
}

void setAttributes(UIElement& element, const QHash<QString, QString>& attributes) {
    const QStringList known = element.attributes().keys();
    for (const QString& name : known) {
        element.setAttribute(name, attributes.value(name));
    }
    for (auto it = attributes.cbegin(); it != attributes.cend(); ++it) {
        element.setAttribute(it.key(), it.value());
    }
}

} // namespace

Replay::Replay() = default;

Replay::~Replay() {
    // An element takes all below it along, so each entry point is deleted and nothing else.
    const QVector<const UIElement*> starts = entryPoints();
    qDeleteAll(starts);
}

void Replay::apply(Record& record) {
    if (record.kind == RecordKind::ElementAdded) {
        addElement(std::move(record.element));
        return;
    }
    UIElement* const element = elementById(record.elementId);
    if (element == nullptr) {
        ++m_recordsWithoutElement;
        return;
    }
    change(*element, record);
}

UIElement* Replay::elementById(const QString& id) const {
    return m_byId.value(id, nullptr);
}

void Replay::change(UIElement& element, const Record& record) {
    switch (record.kind) {
    case RecordKind::ElementAdded:
        break;
    case RecordKind::ChildAdded:
        if (UIElement* const child = elementById(record.text)) {
            element.addChild(child);
        } else {
            ++m_recordsWithoutElement;
        }
        break;
    case RecordKind::EventRegistered:
        element.registerEvent(UIEvent(record.text));
        break;
    case RecordKind::GeometryChanged:
        // The record leaves the flag out; trackers only ever send rectangles that they measured.
        element.setGeometry(ElementGeometry(record.rect, true));
        break;
    case RecordKind::ImageChanged:
        break;
    case RecordKind::StandardTypeChanged:
        element.setStandardType(StandardType(record.text));
        break;
    case RecordKind::TextChanged:
        element.setText(record.text);
        break;
    case RecordKind::TransparentNodeChanged:
        element.setTransparentNode(record.flag);
        break;
    case RecordKind::SubgraphTransparentChanged:
        element.setSubgraphTransparent(record.flag);
        break;
    case RecordKind::WindowNodeChanged:
        element.setWindowNode(record.flag);
        break;
    case RecordKind::UsageIncreased:
        setCount(element, UIEvent(record.text), record.count);
        break;
    case RecordKind::AttributeChanged:
        element.setAttribute(record.name, record.text);
        break;
    }
}

void Replay::addElement(std::unique_ptr<UIElement> announced) {
    if (isNewThroughout(*announced)) {
        ElementWalk walk(announced.get());
        while (const UIElement* element = walk.next()) {
            // The walk began at what is owned here, and so is all below.
            adopt(const_cast<UIElement*>(element)); // NOLINT(cppcoreguidelines-pro-type-const-cast)
        }
        static_cast<void>(announced.release()); // each of them is in the index now
        return;
    }
    // Something of it is known already, or stands in it twice: every node is matched by its id.
    std::vector<UIElement*> path;
    ElementWalk walk(announced.get());
    while (const UIElement* node = walk.next()) {
        UIElement* const element = merge(*node);
        path.resize(static_cast<std::size_t>(walk.depth()));
        if (!path.empty()) {
            path.back()->addChild(element);
        }
        path.push_back(element);
    }
}

bool Replay::isNewThroughout(const UIElement& announced) const {
    QSet<QString> ids;
    ElementWalk walk(&announced);
    while (const UIElement* element = walk.next()) {
        if (m_byId.contains(element->id()) || ids.contains(element->id())) {
            return false;
        }
        ids.insert(element->id());
    }
    return true;
}

void Replay::adopt(UIElement* element) {
    m_elements.push_back(element);
    m_byId.insert(element->id(), element);
    element->setImage(QImage());
}

UIElement* Replay::merge(const UIElement& announced) {
    UIElement* element = elementById(announced.id());
    if (element == nullptr) {
        adopt(new UIElement(announced.concreteType(), announced.standardType(), announced.id()));
        element = m_elements.back();
    }
    // The announcement shows the element as it is now, so what it says replaces what was known.
    element->setStandardType(announced.standardType());
    element->setTransparentNode(announced.isTransparentNode());
    element->setSubgraphTransparent(announced.isSubgraphTransparent());
    element->setWindowNode(announced.isWindowNode());
    element->setText(announced.text());
    element->setGeometry(announced.geometry());
    element->setExtraStrings(announced.extraStrings());
    setAttributes(*element, announced.attributes());
    const QMap<UIEvent, int> usage = announced.usage();
    for (auto it = usage.cbegin(); it != usage.cend(); ++it) {
        setCount(*element, it.key(), it.value());
    }
    return element;
}

QVector<const UIElement*> Replay::entryPoints() const {
    QVector<const UIElement*> starts;
    QSet<const UIElement*> reached;
    for (const UIElement* element : m_elements) {
        if (element->isRoot()) {
            starts.append(element);
            addReachable(element, reached);
        }
    }
    for (const UIElement* element : m_elements) {
        if (!reached.contains(element)) {
            starts.append(element);
            addReachable(element, reached);
        }
    }
    return starts;
}

} // namespace Uicov::Recording
