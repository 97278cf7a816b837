// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/qtquickitemobserver.h"

#include "qtuicoverage/names.h"
#include "qtuicoverage/quickgeometry.h"
#include "tracking/logging.h"
#include "tracking/metamethods.h"
#include "tracking/mnemonics.h"
#include "tracking/uicoveragetracker.h"

#include <QMetaObject>
#include <QVariant>

#include <algorithm>
#include <array>

namespace Vorsk {
namespace UICoverage {

using UIAbstraction::StandardType;
using UIAbstraction::UIElement;

namespace {

bool isLoader(const QQuickItem* item) {
    return qstrcmp(item->metaObject()->className(), "QQuickLoader") == 0;
}

} // namespace

QtQuickItemObserver::QtQuickItemObserver(QQuickItem* item, UIElement* element,
                                         UICoverageTracker* tracker)
    : QtObjectObserver(item, element, tracker) {
    const QuickItemClass cls = QuickItemClass::of(item);
    connectSignals(cls);
    // Reading a property may run QML that deletes the item; what is left to do is then left undone.
    registerConditionalEvents(cls);
    if (observedObject() != nullptr) {
        readText(cls);
    }
    if (observedObject() != nullptr) {
        classify(cls);
    }
}

QtQuickItemObserver::~QtQuickItemObserver() = default;

void QtQuickItemObserver::setKnownChildren(int count, QQuickItem* last) {
    m_knownChildren = count;
    m_lastKnownChild = last;
}

QQuickItem* QtQuickItemObserver::item() const {
    // Made with an item, so the cast needs no check.
    return static_cast<QQuickItem*>(observedObject());
}

bool QtQuickItemObserver::hasProperty(const char* name) const {
    return item()->metaObject()->indexOfProperty(name) != -1;
}

QVariant QtQuickItemObserver::readProperty(const char* name) const {
    QVariant value = item()->property(name);
    if (!value.isValid()) {
        logWarning("Invalid property: '%s'", name);
    }
    return value;
}

QVariant QtQuickItemObserver::readProperty(const QuickItemClass& cls,
                                           QuickItemClass::Property property) const {
    QVariant value = cls.read(item(), property);
    if (!value.isValid()) {
        logWarning("Invalid property: '%s'", QuickItemClass::nameOf(property));
    }
    return value;
}

bool QtQuickItemObserver::readsTrue(const QuickItemClass& cls,
                                    QuickItemClass::Property property) const {
    return observedObject() != nullptr && cls.has(property) && readProperty(cls, property).toBool();
}

void QtQuickItemObserver::connectSignals(const QuickItemClass& cls) {
    static const int visibleChanged =
        methodNumber(QQuickItem::staticMetaObject, "visibleChanged()");
    static const int childrenChanged =
        methodNumber(QQuickItem::staticMetaObject, "childrenChanged()");
    static const int slotOfVisible = methodNumber(staticMetaObject, "onVisibleChanged()");
    static const int slotOfChildren = methodNumber(staticMetaObject, "onChildrenChanged()");
    QMetaObject::connect(item(), visibleChanged, this, slotOfVisible);
    QMetaObject::connect(item(), childrenChanged, this, slotOfChildren);
    connectSignal(cls, QuickItemClass::Clicked);
    connectSignal(cls, QuickItemClass::TextChanged);
    connectSignal(cls, QuickItemClass::Triggered);
    // A check box that has both would count each change twice.
    connectSignal(cls, cls.has(QuickItemClass::CheckedStateChanged)
                           ? QuickItemClass::CheckedStateChanged
                           : QuickItemClass::CheckedChanged);
}

void QtQuickItemObserver::connectSignal(const QuickItemClass& cls, QuickItemClass::Signal signal) {
    static const std::array<int, QuickItemClass::CheckedChanged + 1> numbers{
        methodNumber(staticMetaObject, "onClicked()"),
        methodNumber(staticMetaObject, "onTextChanged()"),
        methodNumber(staticMetaObject, "onTriggered()"),
        methodNumber(staticMetaObject, "onCheckedStateChanged()"),
        methodNumber(staticMetaObject, "onCheckedChanged()")};
    if (cls.has(signal)) {
        QMetaObject::connect(item(), cls.numberOf(signal), this, numbers[signal]);
    }
}

void QtQuickItemObserver::registerConditionalEvents(const QuickItemClass& cls) {
    if (readsTrue(cls, QuickItemClass::PartiallyCheckedEnabled)) {
        element()->registerEvent(Events::partiallyChecked());
    }
    if (readsTrue(cls, QuickItemClass::Checkable)) {
        element()->registerEvent(Events::checked());
        // Read once more: what the application's getter says may have changed.
        if (readsTrue(cls, QuickItemClass::Checkable)) {
            element()->registerEvent(Events::unchecked());
        }
    }
    if (observedObject() == nullptr) {
        return;
    }
    if (cls.has(QuickItemClass::Triggered)) {
        element()->registerEvent(Events::triggered());
    }
    if (cls.has(QuickItemClass::Clicked)) {
        element()->registerEvent(Events::clicked());
    }
}

void QtQuickItemObserver::readText(const QuickItemClass& cls) {
    if (cls.has(QuickItemClass::Text)) {
        const QVariant text = readProperty(cls, QuickItemClass::Text);
        if (text.isValid()) {
            element()->setText(stripMnemonics(text.toString()));
        }
    } else if (cls.has(QuickItemClass::Title)) {
        const QVariant title = readProperty(cls, QuickItemClass::Title);
        if (title.isValid()) {
            element()->setText(title.toString());
        }
    }
}

void QtQuickItemObserver::classify(const QuickItemClass& cls) {
    using Kind = QuickItemClass::Kind;
    switch (kindOf(cls)) {
    case Kind::Popup:
        element()->setStandardType(StandardTypes::dialog());
        element()->setWindowNode(true);
        break;
    case Kind::MenuItem:
        element()->setStandardType(StandardTypes::menuItem());
        warnAboutMissingSignal(cls, QuickItemClass::Clicked);
        warnAboutMissingSignal(cls, QuickItemClass::Triggered);
        break;
    case Kind::Button:
        makeControl(StandardTypes::button());
        element()->registerEvent(Events::clicked());
        warnAboutMissingSignal(cls, QuickItemClass::Clicked);
        break;
    case Kind::TextInput:
        classifyAsTextInput(cls);
        break;
    case Kind::CheckBox:
        classifyAsCheckBox(cls);
        break;
    case Kind::Other:
        break;
    }
}

/** By the class and, for a text, by what stands beside it. */
QuickItemClass::Kind QtQuickItemObserver::kindOf(const QuickItemClass& cls) const {
    using Kind = QuickItemClass::Kind;
    const bool mayBecomeInput = cls.kind() == Kind::Other || cls.kind() == Kind::CheckBox;
    return mayBecomeInput && cls.isText() && hasLoaderBeside() ? Kind::TextInput : cls.kind();
}

/** Version 1 of the controls loads the editor of a text input beside the text that stands for it.
 */
bool QtQuickItemObserver::hasLoaderBeside() const {
    const QQuickItem* const parent = item()->parentItem();
    if (parent == nullptr) {
        return false;
    }
    const QList<QQuickItem*> siblings = parent->childItems();
    return std::any_of(siblings.cbegin(), siblings.cend(), isLoader);
}

void QtQuickItemObserver::warnAboutMissingSignal(const QuickItemClass& cls,
                                                 QuickItemClass::Signal signal) const {
    if (!cls.has(signal)) {
        logWarning("Missing signal: %s::%s", item()->metaObject()->className(),
                   QuickItemClass::nameOf(signal));
    }
}

void QtQuickItemObserver::makeControl(const StandardType& standardType) {
    element()->setStandardType(standardType);
    element()->setTransparentNode(!isShownItem(item()));
    // What a control is made of is nobody's business.
    element()->setSubgraphTransparent(true);
}

void QtQuickItemObserver::classifyAsTextInput(const QuickItemClass& cls) {
    makeControl(StandardTypes::textInput());
    element()->registerEvent(Events::textChanged());
    if (cls.has(QuickItemClass::PlaceholderText)) {
        const QVariant placeholder = readProperty(cls, QuickItemClass::PlaceholderText);
        if (placeholder.isValid()) {
            element()->setText(placeholder.toString());
        }
    }
}

void QtQuickItemObserver::classifyAsCheckBox(const QuickItemClass& cls) {
    makeControl(StandardTypes::checkBox());
    element()->registerEvent(Events::checked());
    element()->registerEvent(Events::unchecked());
    warnAboutMissingSignal(cls, QuickItemClass::Clicked);
    if (!cls.has(QuickItemClass::CheckedState)) {
        logWarning("Missing property: %s::%s", item()->metaObject()->className(),
                   QuickItemClass::nameOf(QuickItemClass::CheckedState));
    }
}

void QtQuickItemObserver::onCheckedChanged() {
    if (!hasProperty("checked")) {
        return;
    }
    UIElement* const counted = element(); // reading the property may be the end of this observer
    const QVariant checked = readProperty("checked");
    if (checked.isValid()) {
        counted->increaseUsage(checked.toBool() ? Events::checked() : Events::unchecked());
    }
}

void QtQuickItemObserver::onCheckedStateChanged() {
    if (!hasProperty("checkedState")) {
        return;
    }
    UIElement* const counted = element(); // reading the property may be the end of this observer
    const QVariant state = readProperty("checkedState");
    if (!state.isValid()) {
        return;
    }
    switch (state.toInt()) {
    case Qt::Unchecked:
        counted->increaseUsage(Events::unchecked());
        break;
    case Qt::PartiallyChecked:
        counted->increaseUsage(Events::partiallyChecked());
        break;
    case Qt::Checked:
        counted->increaseUsage(Events::checked());
        break;
    default:
        break;
    }
}

void QtQuickItemObserver::onClicked() {
    element()->increaseUsage(Events::clicked());
}

void QtQuickItemObserver::onTriggered() {
    element()->increaseUsage(Events::triggered());
}

void QtQuickItemObserver::onTextChanged() {
    const UIElement* const parent = element()->parent();
    if (parent != nullptr && parent->concreteType() == QLatin1String("QQuickLoader")) {
        // The text beside the loader stands for the text input that the loaded editor belongs to.
        if (UIElement* const text = parent->findSibling(QStringLiteral("QQuickText"))) {
            text->increaseUsage(Events::textChanged());
        }
        return;
    }
    if (element()->hasEvent(Events::textChanged())) {
        element()->increaseUsage(Events::textChanged());
    }
}

void QtQuickItemObserver::onVisibleChanged() {
    // Also emitted while the item is half destroyed: nothing but QQuickItem's own members is
    // touched.
    if (!element()->standardType().name().isNull() && element()->isTransparentNode()) {
        element()->setTransparentNode(!isShownItem(item()));
    }
}

void QtQuickItemObserver::onChildrenChanged() {
    if (tracker() != nullptr) {
        tracker()->trackChildren(item());
    }
}

} // namespace UICoverage
} // namespace Vorsk
