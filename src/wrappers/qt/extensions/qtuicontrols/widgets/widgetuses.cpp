// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/widgetuses.h"

#include "qtuicontrols/controlstracker.h"
#include "qtuicontrols/eventkinds.h"
#include "qtuicontrols/widgets/areauses.h"
#include "qtuicontrols/widgets/buttonuses.h"
#include "qtuicontrols/widgets/choiceuses.h"
#include "qtuicontrols/widgets/commands.h"
#include "qtuicontrols/widgets/itemviewuses.h"
#include "qtuicontrols/widgets/linkuses.h"
#include "qtuicontrols/widgets/textuses.h"
#include "qtuicontrols/widgets/usecounter.h"
#include "qtuicontrols/widgets/valueuses.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QGraphicsScene>
#include <QMouseEvent>
#include <QTabBar>

namespace Vorsk {
namespace UIControls {

/** One object for each kind of control, with the slots for all controls of that kind. */
class WidgetUses::Hubs {
public:
    Hubs(const TrackerServices& services, PartElements& parts)
        : counter(services)
        , buttons(counter)
        , texts(counter)
        , values(counter)
        , choices(counter, parts)
        , views(counter, parts)
        , links(counter)
        , areas(counter) {}

    UseCounter counter;
    ButtonUses buttons;
    TextUses texts;
    ValueUses values;
    ChoiceUses choices;
    ItemViewUses views;
    LinkUses links;
    AreaUses areas;
};

namespace {

bool endsPress(QEvent::Type type) {
    return type == QEvent::MouseButtonRelease || type == QEvent::KeyRelease ||
           type == QEvent::TouchEnd;
}

} // namespace

WidgetUses::WidgetUses(const TrackerServices& services, PartElements& parts, Commands& commands)
    : m_hubs(std::make_unique<Hubs>(services, parts))
    , m_commands(commands) {}

WidgetUses::~WidgetUses() = default;

Uses WidgetUses::usesOf(const QWidget* widget, ElementType type) {
    switch (type) {
    case ElementType::Button:
    case ElementType::RadioButton:
    case ElementType::CheckBox:
    case ElementType::Switch:
    case ElementType::GroupBox:
        return ButtonUses::usesOf(widget, type);
    case ElementType::TextInput:
        return TextUses::usesOf(widget);
    case ElementType::SpinBox:
    case ElementType::Slider:
    case ElementType::Dial:
        return ValueUses::usesOf(type);
    case ElementType::ComboBox:
        return ChoiceUses::usesOf(widget);
    case ElementType::List:
    case ElementType::Tree:
    case ElementType::Table:
        return ItemViewUses::usesOf(widget);
    case ElementType::Tab:
    case ElementType::Option:
        return {Use::Chosen};
    case ElementType::Link:
        return {Use::Followed};
    case ElementType::Command:
        return {Use::Triggered};
    case ElementType::Area:
        return {Use::Pressed};
    default:
        return {Use::Seen};
    }
}

void WidgetUses::watch(QWidget* widget, ElementType type, UIElement* element) {
    Q_UNUSED(element)
    if (m_connectsAll) {
        connectTo(widget, type);
    }
}

void WidgetUses::findLinks(QWidget* widget, UIElement* view) {
    m_hubs->links.find(widget, view);
}

void WidgetUses::handleEvent(QObject* object, QEvent* event) {
    const QEvent::Type type = event->type();
    if (!isInput(type)) {
        if (type == QEvent::MetaCall &&
            m_hubs->counter.attribution().verdict().cause == Attribution::Cause::Accessibility) {
            m_hubs->counter.gesture().begin(); // each call of a client is one
            if (!m_connectsAll) {
                connectToAll();
            }
        }
        return;
    }
    InputGesture& gesture = m_hubs->counter.gesture();
    gesture.note(object, event);
    if (type == QEvent::MouseMove && gesture.isHovering()) {
        return;
    }
    if (object->isWidgetType()) {
        handleInput(static_cast<QWidget*>(object), event);
    } else if (auto* const scene = qobject_cast<QGraphicsScene*>(object)) {
        m_hubs->areas.expect(scene, event);
    }
}

void WidgetUses::handleInput(QWidget* receiver, QEvent* event) {
    Hubs& hubs = *m_hubs;
    const QEvent::Type type = event->type();
    QWidget* control = hubs.counter.controlOf(receiver);
    if (control != nullptr && control != receiver &&
        hubs.counter.typeOf(control) == ElementType::GroupBox) {
        control = nullptr; // what lies in a group is no part of it
    }
    if (control != nullptr && hubs.counter.typeOf(control) == ElementType::Area) {
        control = nullptr;
    }
    hubs.areas.expect(receiver, control != nullptr, event);
    if (endsPress(type)) {
        hubs.buttons.endPress();
        hubs.values.endPress();
    }
    hubs.choices.expectTabs(receiver);
    hubs.buttons.expectOthers(receiver, event);
    if (control == nullptr) {
        hubs.links.expect(receiver, event);
        return;
    }
    connectTo(control, hubs.counter.typeOf(control));
    switch (hubs.counter.typeOf(control)) {
    case ElementType::TextInput:
        hubs.texts.expect(control, event);
        break;
    case ElementType::SpinBox:
    case ElementType::Slider:
    case ElementType::Dial:
        hubs.values.expect(control, event);
        break;
    case ElementType::List:
    case ElementType::Tree:
    case ElementType::Table:
        if (auto* const view = qobject_cast<QAbstractItemView*>(control)) {
            hubs.views.expect(view, receiver, event);
        }
        break;
    default:
        break;
    }
}

/** Has the signals of a control connected that are not yet. */
void WidgetUses::connectTo(QWidget* control, ElementType type) {
    Hubs& hubs = *m_hubs;
    switch (type) {
    case ElementType::Button:
    case ElementType::RadioButton:
    case ElementType::CheckBox:
    case ElementType::Switch:
    case ElementType::GroupBox:
    case ElementType::Tab:
        hubs.buttons.connectTo(control);
        break;
    case ElementType::TextInput:
        hubs.texts.connectTo(control);
        break;
    case ElementType::ComboBox:
        hubs.choices.connectTo(control);
        hubs.texts.connectTo(control);
        break;
    case ElementType::SpinBox:
        hubs.texts.connectTo(control);
        hubs.values.connectTo(control);
        break;
    case ElementType::Slider:
    case ElementType::Dial:
        hubs.values.connectTo(control);
        break;
    case ElementType::List:
    case ElementType::Tree:
    case ElementType::Table:
        hubs.choices.connectTo(control); // a calendar
        if (auto* const view = qobject_cast<QAbstractItemView*>(control)) {
            hubs.views.connectTo(view);
        }
        break;
    default:
        break;
    }
}

void WidgetUses::connectToAll() {
    m_connectsAll = true;
    m_hubs->counter.connections().keepAll();
    m_commands.watchAll();
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget* const widget : widgets) {
        if (m_hubs->counter.book().elementOf(widget) != nullptr) {
            connectTo(widget, m_hubs->counter.typeOf(widget));
        }
        if (qobject_cast<QTabBar*>(widget) != nullptr) {
            m_hubs->choices.expectTabs(widget);
        }
    }
}

} // namespace UIControls
} // namespace Vorsk
