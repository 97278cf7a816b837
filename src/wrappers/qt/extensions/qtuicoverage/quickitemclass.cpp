#include "quickitemclass.h"

#include <QHash>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QPointer>
#include <QQuickItem>

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
    return !known.item.isNull() && known.item->metaObject() == &metaObject &&
           known.methods == metaObject.methodCount() &&
           known.properties == metaObject.propertyCount();
}

/** The number of the signal itself where the text names one with default arguments left out. */
int signalNumber(const QMetaObject& metaObject, const char* signature) {
    int number = metaObject.indexOfSignal(signature);
    while (number != -1 && (metaObject.method(number).attributes() & QMetaMethod::Cloned) != 0) {
        --number;
    }
    return number;
}

bool holdsAny(const char* name, std::initializer_list<const char*> fragments) {
    for (const char* fragment : fragments) {
        if (std::strstr(name, fragment) != nullptr) {
            return true;
        }
    }
    return false;
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

QuickItemClass QuickItemClass::of(QQuickItem* item) {
    static QHash<const QMetaObject*, KnownClass> knownClasses;
    const QMetaObject& metaObject = *item->metaObject();
    const auto known = knownClasses.constFind(&metaObject);
    if (known != knownClasses.constEnd() && isSound(*known, metaObject)) {
        return known->cls;
    }
    if (knownClasses.size() >= mostKnown) {
        knownClasses.clear();
    }
    const QuickItemClass cls = learnt(metaObject);
    knownClasses.insert(&metaObject,
                        {cls, item, metaObject.methodCount(), metaObject.propertyCount()});
    return cls;
}

QuickItemClass QuickItemClass::learnt(const QMetaObject& metaObject) {
    QuickItemClass cls;
    const char* const name = metaObject.className();
    cls.m_metaObject = &metaObject;
    cls.m_name = QString::fromLatin1(name);
    cls.m_kind = kindOf(name);
    cls.m_isText = holdsAny(name, {"QQuickText"});
    for (std::size_t i = 0; i < cls.m_signals.size(); ++i) {
        cls.m_signals[i] = signalNumber(metaObject, signalNames[i]);
    }
    for (std::size_t i = 0; i < cls.m_properties.size(); ++i) {
        cls.m_properties[i] = metaObject.indexOfProperty(propertyNames[i]);
    }
    return cls;
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
