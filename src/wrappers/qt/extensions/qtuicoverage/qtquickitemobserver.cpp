#include "qtquickitemobserver.h"

#include "logging.h"
#include "mnemonics.h"
#include "names.h"
#include "quickgeometry.h"
#include "uicoveragetracker.h"

#include <QMetaObject>
#include <QVariant>

#include <algorithm>

namespace Vorsk {
namespace UICoverage {

using UIAbstraction::StandardType;
using UIAbstraction::UIElement;

namespace {

constexpr char clickedSignal[] = "clicked()";
constexpr char triggeredSignal[] = "triggered()";

bool isLoader(const QQuickItem* item) {
    return qstrcmp(item->metaObject()->className(), "QQuickLoader") == 0;
}

} // namespace

QtQuickItemObserver::QtQuickItemObserver(QQuickItem* item, UIElement* element,
                                         UICoverageTracker* tracker)
    : QtObjectObserver(item, element, tracker) {
    connectSignals();
    // Reading a property may run QML that deletes the item; what is left to do is then left undone.
    registerConditionalEvents();
    if (observedObject() != nullptr) {
        readText();
    }
    if (observedObject() != nullptr) {
        classify();
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

QByteArray QtQuickItemObserver::className() const {
    return item()->metaObject()->className();
}

bool QtQuickItemObserver::hasSignal(const char* signature) const {
    return item()->metaObject()->indexOfSignal(signature) != -1;
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

bool QtQuickItemObserver::readsTrue(const char* name) const {
    return observedObject() != nullptr && hasProperty(name) && readProperty(name).toBool();
}

void QtQuickItemObserver::connectSignals() {
    connect(item(), &QQuickItem::visibleChanged, this, &QtQuickItemObserver::onVisibleChanged);
    connect(item(), &QQuickItem::childrenChanged, this, &QtQuickItemObserver::onChildrenChanged);
    if (hasSignal(clickedSignal)) {
        connect(item(), SIGNAL(clicked()), this, SLOT(onClicked()));
    }
    if (hasSignal("textChanged()")) {
        connect(item(), SIGNAL(textChanged()), this, SLOT(onTextChanged()));
    }
    if (hasSignal(triggeredSignal)) {
        connect(item(), SIGNAL(triggered()), this, SLOT(onTriggered()));
    }
    // A check box that has both would count each change twice.
    if (hasSignal("checkedStateChanged()")) {
        connect(item(), SIGNAL(checkedStateChanged()), this, SLOT(onCheckedStateChanged()));
    } else if (hasSignal("checkedChanged()")) {
        connect(item(), SIGNAL(checkedChanged()), this, SLOT(onCheckedChanged()));
    }
}

void QtQuickItemObserver::registerConditionalEvents() {
    if (readsTrue("partiallyCheckedEnabled")) {
        element()->registerEvent(Events::partiallyChecked());
    }
    if (readsTrue("checkable")) {
        element()->registerEvent(Events::checked());
        // Read once more: what the application's getter says may have changed.
        if (readsTrue("checkable")) {
            element()->registerEvent(Events::unchecked());
        }
    }
    if (observedObject() == nullptr) {
        return;
    }
    if (hasSignal(triggeredSignal)) {
        element()->registerEvent(Events::triggered());
    }
    if (hasSignal(clickedSignal)) {
        element()->registerEvent(Events::clicked());
    }
}

void QtQuickItemObserver::readText() {
    if (hasProperty("text")) {
        const QVariant text = readProperty("text");
        if (text.isValid()) {
            element()->setText(stripMnemonics(text.toString()));
        }
    } else if (hasProperty("title")) {
        const QVariant title = readProperty("title");
        if (title.isValid()) {
            element()->setText(title.toString());
        }
    }
}

void QtQuickItemObserver::classify() {
    const QByteArray name = className();
    if (name.contains("QQuickPopupItem")) {
        element()->setStandardType(StandardTypes::dialog());
        element()->setWindowNode(true);
    } else if (name.contains("QQuickMenuItem")) {
        element()->setStandardType(StandardTypes::menuItem());
        warnAboutMissingSignal(clickedSignal);
        warnAboutMissingSignal(triggeredSignal);
    } else if (isButton(name)) {
        makeControl(StandardTypes::button());
        element()->registerEvent(Events::clicked());
        warnAboutMissingSignal(clickedSignal);
    } else if (isTextInput(name)) {
        classifyAsTextInput();
    } else if (name.contains("CheckBox_QMLTYPE_")) {
        classifyAsCheckBox();
    }
}

bool QtQuickItemObserver::isButton(const QByteArray& name) const {
    static constexpr const char* fragments[] = {"Button_QMLTYPE_", "QQuickButton",
                                                "QQuickTabButton", "QQuickToolButton",
                                                "QQuickRoundButton"};
    return std::any_of(std::begin(fragments), std::end(fragments),
                       [&name](const char* fragment) { return name.contains(fragment); });
}

bool QtQuickItemObserver::isTextInput(const QByteArray& name) const {
    // Version 1 of the controls loads the editor of a text input beside the text that stands for
    // it.
    const QQuickItem* const parent = item()->parentItem();
    if (name.contains("QQuickText") && parent != nullptr) {
        const QList<QQuickItem*> siblings = parent->childItems();
        if (std::any_of(siblings.cbegin(), siblings.cend(), isLoader)) {
            return true;
        }
    }
    return name.contains("TextInput_QMLTYPE_") || name.contains("QQuickTextArea") ||
           name.contains("QQuickTextField");
}

void QtQuickItemObserver::warnAboutMissingSignal(const char* signature) const {
    if (!hasSignal(signature)) {
        logWarning("Missing signal: %s::%s", className().constData(), signature);
    }
}

void QtQuickItemObserver::makeControl(const StandardType& standardType) {
    element()->setStandardType(standardType);
    element()->setTransparentNode(!isShownItem(item()));
    // What a control is made of is nobody's business.
    element()->setSubgraphTransparent(true);
}

void QtQuickItemObserver::classifyAsTextInput() {
    makeControl(StandardTypes::textInput());
    element()->registerEvent(Events::textChanged());
    if (hasProperty("placeholderText")) {
        const QVariant placeholder = readProperty("placeholderText");
        if (placeholder.isValid()) {
            element()->setText(placeholder.toString());
        }
    }
}

void QtQuickItemObserver::classifyAsCheckBox() {
    makeControl(StandardTypes::checkBox());
    element()->registerEvent(Events::checked());
    element()->registerEvent(Events::unchecked());
    warnAboutMissingSignal(clickedSignal);
    if (!hasProperty("checkedState")) {
        logWarning("Missing property: %s::%s", className().constData(), "checkedState");
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
    if (element()->usage().contains(Events::textChanged())) {
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
