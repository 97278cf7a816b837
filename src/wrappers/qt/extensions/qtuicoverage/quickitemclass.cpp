// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/quickitemclass.h"

#include <QHash>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QPointer>
#include <QQuickItem>

#include <algorithm>
#include <cstring>

namespace Vorsk {
namespace UICoverage {

namespace {

constexpr const char* signalNames[] = {"clicked()", "textChanged()", "triggered()",
                                       "checkedStateChanged()", "checkedChanged()"};
constexpr const char* propertyNames[] = {"partiallyCheckedEnabled", "checkable",   "text", "title",
                                         "placeholderText",         "checkedState"};

/** More classes than programs have; where each item has one of its own, nothing is gained. */
constexpr int mostKnown = 1000;

struct KnownClass {
    QuickItemClass cls;
    QPointer<QQuickItem> item;
    // Also classes that grow while they live are looked at again.
    int methods;
    int properties;
};

bool isSound(const KnownClass& known, const QMetaObject& metaObject) {
    const QMetaObject* found = known.item.isNull() ? nullptr : known.item->metaObject();
    while (found != nullptr && found != &metaObject) {
        found = found->superClass();
    }
    return found != nullptr && known.methods == metaObject.methodCount() &&
           known.properties == metaObject.propertyCount();
}

/** Among those that the class adds to the one it extends; -1 when none is. A signal of that name
 * with default arguments left out counts as itself. */
int addedSignal(const QMetaObject& metaObject, const char* signature) {
    constexpr int parentheses = 2;
    const auto size = static_cast<int>(std::strlen(signature)) - parentheses;
    for (int i = metaObject.methodCount() - 1; i >= metaObject.methodOffset(); --i) {
        QMetaMethod method = metaObject.method(i);
        if (method.methodType() != QMetaMethod::Signal || method.parameterCount() > 0 ||
            method.name() != QByteArray::fromRawData(signature, size)) {
            continue;
        }
        while ((method.attributes() & QMetaMethod::Cloned) != 0) {
            method = metaObject.method(--i);
        }
        return i;
    }
    return -1;
}

int addedProperty(const QMetaObject& metaObject, const char* name) {
    int i = metaObject.propertyCount() - 1;
    while (i >= metaObject.propertyOffset() &&
           std::strcmp(metaObject.property(i).name(), name) != 0) {
        --i;
    }
    return i >= metaObject.propertyOffset() ? i : -1;
}

bool holdsAny(const char* name, std::initializer_list<const char*> fragments) {
    return std::any_of(fragments.begin(), fragments.end(), [name](const char* fragment) {
        return std::strstr(name, fragment) != nullptr;
    });
}

QuickItemClass::Kind kindOf(const char* name) {
    using Kind = QuickItemClass::Kind;
    if (holdsAny(name, {"QQuickPopupItem"})) {
        return Kind::Popup;
    }
    if (holdsAny(name, {"QQuickMenuItem"})) {
        return Kind::MenuItem;
    }
    if (holdsAny(name, {"Button_QMLTYPE_", "QQuickButton", "QQuickTabButton", "QQuickToolButton",
                        "QQuickRoundButton"})) {
        return Kind::Button;
    }
    if (holdsAny(name, {"TextInput_QMLTYPE_", "QQuickTextArea", "QQuickTextField"})) {
        return Kind::TextInput;
    }
    return holdsAny(name, {"CheckBox_QMLTYPE_"}) ? Kind::CheckBox : Kind::Other;
}

} // namespace

QuickItemClass::QuickItemClass() {
    m_signals.fill(-1);
    m_properties.fill(-1);
}

QuickItemClass QuickItemClass::of(QQuickItem* item) {
    return of(*item->metaObject(), item);
}

/** A class that the item has or extends. */
QuickItemClass QuickItemClass::of(const QMetaObject& metaObject, QQuickItem* item) {
    static QHash<const QMetaObject*, KnownClass> knownClasses;
    const auto known = knownClasses.constFind(&metaObject);
    if (known != knownClasses.constEnd() && isSound(*known, metaObject)) {
        return known->cls;
    }
    const QMetaObject* const base = metaObject.superClass();
    QuickItemClass cls = base != nullptr ? of(*base, item) : QuickItemClass();
    if (cls.extend(metaObject)) {
        if (knownClasses.size() >= mostKnown) {
            knownClasses.clear();
        }
        knownClasses.insert(&metaObject,
                            {cls, item, metaObject.methodCount(), metaObject.propertyCount()});
    }
    return cls;
}

/** Takes the class for one that extends this; false when it has nothing that this has not. */
bool QuickItemClass::extend(const QMetaObject& metaObject) {
    const QMetaObject* const base = metaObject.superClass();
    const char* const name = metaObject.className();
    m_metaObject = &metaObject;
    // Each item that a delegate makes has a meta object of its own, often just like the next one's.
    if (base != nullptr && std::strcmp(name, base->className()) == 0 &&
        metaObject.methodCount() == metaObject.methodOffset() &&
        metaObject.propertyCount() == metaObject.propertyOffset()) {
        return false;
    }
    m_name = QString::fromUtf8(name);
    m_kind = kindOf(name);
    m_isText = holdsAny(name, {"QQuickText"});
    for (std::size_t i = 0; i < m_signals.size(); ++i) {
        const int added = addedSignal(metaObject, signalNames[i]);
        m_signals[i] = added != -1 ? added : m_signals[i];
    }
    for (std::size_t i = 0; i < m_properties.size(); ++i) {
        const int added = addedProperty(metaObject, propertyNames[i]);
        m_properties[i] = added != -1 ? added : m_properties[i];
    }
    return true;
}

const char* QuickItemClass::nameOf(Signal signal) {
    return signalNames[signal];
}

const char* QuickItemClass::nameOf(Property property) {
    return propertyNames[property];
}

QVariant QuickItemClass::read(QQuickItem* item, Property property) const {
    const QMetaObject* const metaObject = item->metaObject();
    if (metaObject == m_metaObject && has(property)) {
        const QMetaProperty found = metaObject->property(m_properties[property]);
        if (found.isReadable()) {
            return found.read(item);
        }
    }
    return item->property(propertyNames[property]);
}

} // namespace UICoverage
} // namespace Vorsk
