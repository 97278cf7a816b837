// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/core/bookofelements.h"

#include "tracking/streamuielementexporter.h"
#include "uiabstraction/uielement.h"

#include <array>
#include <utility>

namespace Vorsk {
namespace UIControls {

using UIAbstraction::ElementGeometry;
using UIAbstraction::StandardType;
using UIAbstraction::UIEvent;

namespace {

/** The names of an enumeration as values of the model, made once. */
template <class Value, class Enumeration, int count>
const Value& named(Enumeration item) {
    static const std::array<Value, count> values = [] {
        std::array<Value, count> made;
        for (int i = 0; i < count; ++i) {
            made.at(static_cast<std::size_t>(i)) =
                Value(QString::fromLatin1(nameOf(static_cast<Enumeration>(i))));
        }
        return made;
    }();
    return values.at(static_cast<std::size_t>(item));
}

const StandardType& standardType(ElementType type) {
    return named<StandardType, ElementType, typeCount>(type);
}

const UIEvent& event(Use use) {
    return named<UIEvent, Use, useCount>(use);
}

const QString& name(Attribute attribute) {
    return named<QString, Attribute, attributeCount>(attribute);
}

/** What tells one thing from another below the same parent. Never null, which stands for none. */
quint64 likenessOf(const Description& what) {
    // Two hashes of 32 bits with different seeds: one of 2^32 would be met by chance.
    uint first = static_cast<uint>(what.type);
    uint second = ~first;
    const auto take = [&](const QString& text) {
        first = qHash(text, first * 31U + 7U);
        second = qHash(text, second * 37U + 11U);
    };
    take(what.className);
    take(what.text);
    for (const auto& attribute : what.attributes) {
        switch (attribute.first) {
        case Attribute::Group:
        case Attribute::Label:
        case Attribute::ObjectName:
        case Attribute::Page:
        case Attribute::Placeholder:
        case Attribute::QmlId:
            take(attribute.second);
            break;
        default: // what may be another the next time
            break;
        }
    }
    return quint64{first} << 32U | second;
}

} // namespace

BookOfElements::BookOfElements(UICoverage::StreamUIElementExporter& exporter)
    : m_exporter(exporter) {}

BookOfElements::~BookOfElements() {
    // Elements that were announced may be asked for by whoever reads the stream in this process;
    // they go with their roots.
    for (UIElement* root : m_roots) {
        delete root;
    }
}

UIElement* BookOfElements::add(QObject* object, const Description& what, UIElement* parent) {
    const quint64 likeness = likenessOf(what);
    UIElement* element = reusable(parent, likeness);
    const bool isNew = element == nullptr;
    if (isNew) {
        element = make(what);
    }
    const int parentsLife = entryOf(parent).life;
    Entry& entry = entryOf(element);
    entry.type = what.type;
    entry.likeness = likeness;
    entry.parentsLife = parentsLife;
    if (object != nullptr) {
        addObject(object, element);
    }
    if (!isNew) {
        ++entryOf(element).life;
        renew(element, what);
        return element;
    }
    if (parent == nullptr) {
        m_roots.push_back(element);
        m_pending.push_back({element, nullptr});
    } else {
        Entry& above = entryOf(parent);
        ++above.newChildren;
        if (above.isAnnounced) {
            m_pending.push_back({element, parent});
        } else {
            parent->addChild(element);
        }
    }
    if (m_openBatches == 0) {
        beginBatch();
        endBatch();
    }
    return element;
}

UIElement* BookOfElements::make(const Description& what) {
    auto* const element = new UIElement(what.className, standardType(what.type), QString());
    element->setText(what.text);
    for (int i = 0; i < useCount; ++i) {
        if (what.uses.contains(static_cast<Use>(i))) {
            element->registerEvent(event(static_cast<Use>(i)));
        }
    }
    for (const auto& attribute : what.attributes) {
        element->setAttribute(name(attribute.first), attribute.second);
    }
    element->setWindowNode(what.type == ElementType::Window || what.type == ElementType::Dialog);
    return element;
}

void BookOfElements::addObject(QObject* object, UIElement* element) {
    m_objects.insert(object, element);
    entryOf(element).hasObject = true;
}

void BookOfElements::endBatch() {
    if (--m_openBatches > 0) {
        return;
    }
    // Whoever takes a record may run code that adds elements.
    const std::vector<Pending> pending = std::exchange(m_pending, {});
    for (const Pending& added : pending) {
        announce(added.root);
        if (added.parent != nullptr) {
            added.parent->addChild(added.root);
        }
    }
}

void BookOfElements::announce(UIElement* root) {
    m_exporter.announceTree(root);
    std::vector<UIElement*> open{root};
    while (!open.empty()) {
        UIElement* const element = open.back();
        open.pop_back();
        entryOf(element).isAnnounced = true;
        const QList<UIElement*> children = element->children();
        open.insert(open.end(), children.cbegin(), children.cend());
    }
}

/** Takes one out of those that can be used again; null when there is none. */
UIElement* BookOfElements::reusable(UIElement* parent, quint64 likeness) {
    sweep(parent);
    const auto below = m_reusable.find(parent);
    if (below == m_reusable.end()) {
        return nullptr;
    }
    const auto alike = below->find(likeness);
    if (alike == below->end()) {
        return nullptr;
    }
    UIElement* const element = alike->back();
    alike->pop_back();
    if (alike->empty()) {
        below->erase(alike);
    }
    return isDead(element, entryOf(parent).life) ? element : nullptr;
}

/** Whether what the element stood for is gone: its object, or for one without, the object of its
 * parent. */
bool BookOfElements::isDead(const UIElement* element, int parentsLife) const {
    const Entry* const entry = m_entries.find(element);
    return entry->hasObject ? m_objects.objectOf(element) == nullptr
                            : entry->parentsLife < parentsLife;
}

/**
 * Looks for children whose objects have died. Not each time among many: as often as their number
 * has grown by a quarter, which bounds the work for each.
 */
void BookOfElements::sweep(UIElement* parent) {
    constexpr int few = 64;
    Entry& above = entryOf(parent);
    if (parent != nullptr && !above.isAnnounced) {
        return; // just made: nothing can have died
    }
    if (above.sweptChildren > few && 4 * above.newChildren < above.sweptChildren) {
        ++above.newChildren;
        return;
    }
    QHash<quint64, std::vector<UIElement*>> dead;
    const int life = above.life;
    const auto look = [&](UIElement* element) {
        if (isDead(element, life)) {
            dead[entryOf(element).likeness].push_back(element);
        }
    };
    const QList<UIElement*> children = parent == nullptr ? QList<UIElement*>() : parent->children();
    int count = 0;
    // From the last, so that the first is used again first.
    for (auto it = children.crbegin(); it != children.crend(); ++it, ++count) {
        look(*it);
    }
    if (parent == nullptr) {
        for (auto it = m_roots.crbegin(); it != m_roots.crend(); ++it, ++count) {
            look(*it);
        }
    }
    Entry& swept = entryOf(parent);
    swept.sweptChildren = count;
    swept.newChildren = 0;
    m_reusable.insert(parent, dead);
}

/** Brings one that is used again to what is known of it now. */
void BookOfElements::renew(UIElement* element, const Description& what) {
    setText(element, what.text);
    QHash<QString, QString> known = element->attributes();
    for (const auto& attribute : what.attributes) {
        setAttribute(element, attribute.first, attribute.second);
        known.remove(name(attribute.first));
    }
    known.remove(name(Attribute::UsedWays));
    for (auto it = known.cbegin(); it != known.cend(); ++it) {
        element->setAttribute(it.key(), QString());
    }
    for (int i = 0; i < useCount; ++i) {
        if (what.uses.contains(static_cast<Use>(i))) {
            announceUse(element, static_cast<Use>(i));
        }
    }
}

void BookOfElements::setText(UIElement* element, const QString& text) {
    if (element->text() != text) {
        element->setText(text);
    }
}

void BookOfElements::setAttribute(UIElement* element, Attribute attribute, const QString& value) {
    element->setAttribute(name(attribute), value);
}

QString BookOfElements::attribute(const UIElement* element, Attribute attribute) const {
    return element->attribute(name(attribute));
}

void BookOfElements::setPlace(UIElement* element, const QRect& place) {
    if (!element->geometry().isValid() || element->geometry().rect() != place) {
        element->setGeometry(ElementGeometry(place, true));
    }
}

void BookOfElements::setPicture(UIElement* element, const QImage& picture) {
    element->setImage(picture);
}

void BookOfElements::announceUse(UIElement* element, Use use) {
    if (!element->hasEvent(event(use))) {
        element->registerEvent(event(use));
    }
}

void BookOfElements::countUse(UIElement* element, Use use) {
    element->increaseUsage(event(use));
}

ElementType BookOfElements::typeOf(const UIElement* element) const {
    return m_entries.value(element).type;
}

QString BookOfElements::idOf(const UIElement* element) const {
    return element->id();
}

UIElement* BookOfElements::parentOf(const UIElement* element) const {
    return element->parent();
}

UIElement* BookOfElements::viewOf(UIElement* element) const {
    while (element != nullptr && !isView(typeOf(element))) {
        element = element->parent();
    }
    return element;
}

} // namespace UIControls
} // namespace Vorsk
