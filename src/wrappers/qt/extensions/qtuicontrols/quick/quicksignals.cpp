// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quicksignals.h"

#include <QMetaObject>
#include <QObject>
#include <QVariant>

#include <cstring>
#include <initializer_list>
#include <utility>

namespace Vorsk {
namespace UIControls {

namespace {

using Types = quint32;

constexpr Types only(std::initializer_list<ElementType> types) {
    Types bits = 0;
    for (const ElementType type : types) {
        bits |= Types{1} << static_cast<unsigned>(type);
    }
    return bits;
}

constexpr Types buttons = only({ElementType::Button, ElementType::RadioButton,
                                ElementType::CheckBox, ElementType::Switch, ElementType::GroupBox});
constexpr Types views = only({ElementType::List, ElementType::Tree, ElementType::Table});
constexpr Types sliders = only({ElementType::Slider, ElementType::Dial});

/** Of the signals, the first that a class has is connected to the slot. Qt Quick pays heed to
 * whether some signals have a receiver, such as clicked() of a MouseArea: they must not be here. */
struct Rule {
    Types types;
    const char* slot;
    const char* signal;
    const char* otherwise = nullptr;
    const char* lastly = nullptr;
};

constexpr Rule rules[] = {
    // The state comes first: when clicked() arrives, the application may have changed it again.
    {buttons, "onToggled()", "toggled()", "checkedStateChanged()", "checkedChanged()"},
    {buttons, "onClicked()", "clicked()"},
    // In the first generation tabs are areas.
    {only({ElementType::Tab}), "onClicked()", "clicked()", "pressed(QQuickMouseEvent*)"},
    {buttons, "onClicked()", "activated()"}, // a delayed button, while it is still held
    {only({ElementType::ComboBox}), "onChosen()", "activated(int)"},
    {only({ElementType::TextInput}), "onEdited()", "textEdited()", "textChanged()"},
    {only({ElementType::TextInput, ElementType::ComboBox}), "onConfirmed()", "accepted()"},
    {only({ElementType::SpinBox}), "onChanged()", "valueModified()", "valueChanged()",
     "currentIndexChanged()"},
    {only({ElementType::SpinBox}) | views, "onMovingChanged()", "movingChanged()"},
    {sliders, "onMoved()", "moved()", "valueChanged()"},
    {views, "onCurrentChanged()", "currentIndexChanged()", "currentRowChanged()",
     "selectedDateChanged()"},
    {views, "onRowClicked()", "clicked(int)", "clicked(QVariant)"},
    {views, "onActivated()", "activated(int)", "activated(QVariant)"},
    {views, "onExpanded()", "expanded(QVariant)"},
    {views, "onExpanded()", "collapsed(QVariant)"},
    {views, "onSorted()", "sortIndicatorColumnChanged()"},
    {views, "onSorted()", "sortIndicatorOrderChanged()"},
    {only({ElementType::Command}), "onTriggered()", "triggered(QObject*)", "triggered()",
     "activated()"},
    {only({ElementType::Command}), "onTriggered()", "activatedAmbiguously()"},
    {only({ElementType::Link}), "onLinkActivated()", "linkActivated(QString)"},
    {only({ElementType::Area}), "onPressedChanged()", "pressedChanged()"},
    {only({ElementType::Area}), "onTapped()", "tapped(QQuickEventPoint*)"},
    {only({ElementType::Area}), "onTapped()", "longPressed()"},
    {only({ElementType::Area}), "onActiveChanged()", "activeChanged()"},
    {only({ElementType::Area}), "onTouched()", "pressed(QList<QObject*>)"},
    {only({ElementType::Area}), "onPinched()", "pinchStarted(QQuickPinchEvent*)"},
};

/** Those that are told of by setting a property, with the use that it is. */
constexpr Rule clientRules[] = {
    {buttons, "onToggled()", "checkedChanged()"},
    {only({ElementType::ComboBox}), "onChosen()", "currentIndexChanged()"},
    {only({ElementType::TextInput}), "onEdited()", "textChanged()"},
    {only({ElementType::SpinBox}), "onChanged()", "valueChanged()"},
    {sliders, "onMoved()", "valueChanged()"},
};

bool isDefinedInQml(const QMetaObject& cls) {
    return std::strstr(cls.className(), "_QML") != nullptr;
}

int signalNumber(const QMetaObject& cls, const Rule& rule) {
    for (const char* signal : {rule.signal, rule.otherwise, rule.lastly}) {
        const int number = signal == nullptr ? -1 : cls.indexOfSignal(signal);
        if (number != -1) {
            return number;
        }
    }
    return -1;
}

} // namespace

QuickSignals::QuickSignals(const QMetaObject& receivers, ReceiverOf receiverOf)
    : m_receivers(receivers)
    , m_receiverOf(std::move(receiverOf)) {}

void QuickSignals::connect(QObject* control, ElementType type) {
    const QMetaObject* cppClass = control->metaObject();
    while (isDefinedInQml(*cppClass)) {
        cppClass = cppClass->superClass();
    }
    if (type == ElementType::Link && control->inherits("QQuickText")) {
        return; // takes presses on links only if somebody is told of them
    }
    const std::vector<Link>& links = findOnce(*cppClass, type);
    if (!links.empty()) {
        connect(control, links);
    } else if (cppClass != control->metaObject()) {
        connect(control, find(*control->metaObject(), type));
    }
    if (type != ElementType::Slider) {
        return;
    }
    for (const char* handle : {"first", "second"}) { // of a range slider
        if (auto* const node = control->property(handle).value<QObject*>()) {
            connect(node, findOnce(*node->metaObject(), type));
        }
    }
}

void QuickSignals::connectPages(QObject* container) {
    const int signal = container->metaObject()->indexOfSignal("currentIndexChanged()");
    if (signal != -1) {
        connect(container, {{signal, slotNumber("onPageChanged()")}});
    }
}

void QuickSignals::connectPart(QObject* textInput) {
    const int signal = textInput->metaObject()->indexOfSignal("textEdited()");
    if (signal != -1) {
        connect(textInput, {{signal, slotNumber("onPartEdited()")}});
    }
}

void QuickSignals::connectForClients(QObject* control, ElementType type) {
    connect(control, type);
    for (const Rule& rule : clientRules) {
        const int signal = (rule.types & only({type})) != 0
                               ? control->metaObject()->indexOfSignal(rule.signal)
                               : -1;
        if (signal != -1) {
            connect(control, {{signal, slotNumber(rule.slot)}});
        }
    }
}

std::vector<QuickSignals::Link> QuickSignals::find(const QMetaObject& cls, ElementType type) const {
    std::vector<Link> links;
    for (const Rule& rule : rules) {
        const int signal = (rule.types & only({type})) != 0 ? signalNumber(cls, rule) : -1;
        if (signal != -1) {
            links.emplace_back(signal, slotNumber(rule.slot));
        }
    }
    return links;
}

const std::vector<QuickSignals::Link>& QuickSignals::findOnce(const QMetaObject& cppClass,
                                                              ElementType type) {
    Known& known = m_known[{&cppClass, static_cast<int>(type)}];
    if (known.className != cppClass.className()) {
        known.className = cppClass.className();
        known.links = find(cppClass, type);
    }
    return known.links;
}

void QuickSignals::connect(QObject* sender, const std::vector<Link>& links) {
    if (links.empty()) {
        return;
    }
    const QObject* const receiver = m_receiverOf(sender);
    for (const Link& link : links) {
        QMetaObject::connect(sender, link.first, receiver, link.second,
                             Qt::DirectConnection | Qt::UniqueConnection);
    }
}

int QuickSignals::slotNumber(const char* signature) const {
    const int number = m_receivers.indexOfSlot(signature);
    Q_ASSERT(number != -1);
    return number;
}

} // namespace UIControls
} // namespace Vorsk
