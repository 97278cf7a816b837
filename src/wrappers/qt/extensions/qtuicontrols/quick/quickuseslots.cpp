// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickuseslots.h"

#include "qtuicontrols/eventkinds.h"
#include "qtuicontrols/quick/quickclass.h"
#include "qtuicontrols/quick/quickgesture.h"
#include "qtuicontrols/quick/quickjudge.h"
#include "qtuicontrols/quick/quickmotions.h"
#include "qtuicontrols/quick/quickpagetabs.h"
#include "qtuicontrols/quick/quickparts.h"
#include "qtuicontrols/quick/quickplaces.h"

#include <QStringList>
#include <QVariant>

#include <algorithm>
#include <utility>

namespace Vorsk {
namespace UIControls {

namespace {

/** What the present state of something that can be checked is called. */
Use stateOf(const QObject* control) {
    for (const char* const name : {"checkState", "checkedState"}) {
        const QVariant state = control->property(name);
        if (state.isValid() && state.toInt() == Qt::PartiallyChecked) {
            return Use::PartiallyChecked;
        }
    }
    return control->property("checked").toBool() ? Use::Checked : Use::Unchecked;
}

/** The page that a container shows; null when it shows none. */
QObject* currentPageOf(QObject* container) {
    const QVariant item = container->property("currentItem");
    if (item.isValid()) {
        return item.value<QObject*>();
    }
    QVariant tab; // of a tab view of the first generation
    QMetaObject::invokeMethod(container, "getTab", Qt::DirectConnection,
                              Q_RETURN_ARG(QVariant, tab),
                              Q_ARG(QVariant, container->property("currentIndex")));
    return tab.value<QObject*>();
}

} // namespace

QuickUseSlots::QuickUseSlots(ElementBook& book, const QuickJudge& judge, QuickMotions& motions,
                             const QuickGesture& gesture)
    : m_book(book)
    , m_judge(judge)
    , m_motions(motions)
    , m_gesture(gesture) {}

void QuickUseSlots::addPage(QObject* page, UIElement* tab) {
    m_pages[page] = {page, tab};
}

void QuickUseSlots::count(QObject* control, Use use) {
    if (UIElement* const element = m_book.elementOf(control)) {
        countElement(control, element, use);
        countRowOf(control);
    }
}

void QuickUseSlots::countElement(QObject* object, UIElement* element, Use use) {
    if (m_judge.isClientActing()) {
        if (m_pendingSender != m_sender) {
            m_pending.clear();
            m_pendingSender = m_sender;
        }
        m_pending.push_back({object, element, use});
        return;
    }
    if (isCounted(element, use)) {
        return;
    }
    m_counted.push_back({element, use});
    const QRect place = object != nullptr ? placeOf(object) : QRect();
    if (!place.isEmpty()) {
        m_book.setPlace(element, place);
    }
    m_book.announceUse(element, use);
    m_book.countUse(element, use);
}

void QuickUseSlots::countPending() {
    const QEvent::Type type = m_judge.decisiveType();
    if (m_judge.isClientActing() || (type != QEvent::None && !isInput(type))) {
        return; // the call goes on
    }
    m_pendingSender = nullptr;
    const std::vector<Pending> pending = std::exchange(m_pending, {});
    for (const Pending& use : pending) {
        countElement(use.object, use.element, use.use);
    }
}

/** A press on a row chooses it, also where nothing keeps a current one. */
void QuickUseSlots::countRowOf(QObject* control) {
    QObject* const view = m_judge.viewAround(control);
    if (view != nullptr && m_judge.rowOf(control, view) != nullptr) {
        countElement(view, m_book.elementOf(view), Use::Chosen);
    }
}

bool QuickUseSlots::isCounted(const UIElement* element, Use use) {
    if (m_countedIn != m_gesture.serial()) {
        m_countedIn = m_gesture.serial();
        m_counted.clear();
    }
    return std::any_of(m_counted.begin(), m_counted.end(), [&](const Counted& counted) {
        return counted.element == element && counted.use == use;
    });
}

bool QuickUseSlots::isStateCounted(const UIElement* element) {
    return isCounted(element, Use::Checked) || isCounted(element, Use::Unchecked) ||
           isCounted(element, Use::PartiallyChecked);
}

void QuickUseSlots::countIfOperated(QObject* control, Use use) {
    if (m_judge.isOperated(control)) {
        count(control, use);
    }
}

void QuickUseSlots::countState(QObject* control) {
    count(control, stateOf(control));
}

void QuickUseSlots::receive(QObject* sender, Slot slot) {
    const QObject* const outer = std::exchange(m_sender, sender);
    (this->*slot)(sender);
    m_sender = outer;
}

void QuickUseSlots::onToggled(QObject* sender) {
    if (m_judge.isOperated(sender)) {
        countState(sender);
    }
}

void QuickUseSlots::onClicked(QObject* control) {
    UIElement* const element = m_book.elementOf(control);
    if (element == nullptr || !m_judge.isOperated(control)) {
        return;
    }
    switch (m_book.typeOf(element)) {
    case ElementType::Tab:
        count(control, Use::Chosen);
        break;
    case ElementType::Button:
        if (!isStateCounted(element)) {
            count(control, Use::Clicked);
        }
        break;
    default:
        // As a radio button that is checked already.
        if (!isStateCounted(element)) {
            countState(control);
        }
        break;
    }
}

void QuickUseSlots::onChosen(QObject* comboBox) {
    if (!m_judge.isOperated(comboBox)) {
        return;
    }
    count(comboBox, Use::Chosen);
    const int index = comboBox->property("currentIndex").toInt();
    UIElement* const option =
        m_parts == nullptr ? nullptr : m_parts->optionElement(comboBox, index);
    if (option != nullptr) {
        countElement(comboBox, option, Use::Chosen);
    }
}

void QuickUseSlots::onEdited(QObject* sender) {
    // Where the text input in it tells itself, other changes during the key are the program's.
    if (!m_judge.isTypedIntoPartOf(sender)) {
        countEdit(sender);
    }
}

void QuickUseSlots::onPartEdited(QObject* sender) {
    if (QObject* const control = m_judge.owners().controlOf(sender)) {
        countEdit(control);
    }
}

void QuickUseSlots::countEdit(QObject* control) {
    const bool isComposing =
        m_judge.decisiveType() == QEvent::InputMethod && !m_gesture.isCommitted();
    if (!isComposing) {
        countIfOperated(control, Use::Edited);
    }
}

void QuickUseSlots::onConfirmed(QObject* sender) {
    countIfOperated(sender, Use::Confirmed);
}

void QuickUseSlots::onChanged(QObject* sender) {
    countIfOperated(sender, Use::Changed);
}

void QuickUseSlots::onMoved(QObject* control) {
    // The handles of a range slider are objects of their own.
    countIfOperated(m_book.elementOf(control) == nullptr ? control->parent() : control, Use::Moved);
}

void QuickUseSlots::onMovingChanged(QObject* sender) {
    if (!QuickMotions::isMoving(sender)) {
        m_motions.end(sender);
    }
}

void QuickUseSlots::onCurrentChanged(QObject* sender) {
    if (m_judge.isViewOperated(sender)) {
        count(sender, Use::Chosen);
    }
}

void QuickUseSlots::onRowClicked(QObject* sender) {
    countIfOperated(sender, Use::Chosen);
}

void QuickUseSlots::onActivated(QObject* sender) {
    countIfOperated(sender, Use::Activated);
}

void QuickUseSlots::onExpanded(QObject* sender) {
    countIfOperated(sender, Use::Expanded);
}

void QuickUseSlots::onSorted(QObject* sender) {
    countIfOperated(sender, Use::Sorted);
}

void QuickUseSlots::onPageChanged(QObject* container) {
    if (!m_judge.isContainerOperated(container)) {
        return;
    }
    QObject* const current = currentPageOf(container);
    if (current == nullptr) {
        return;
    }
    for (QObject* const object : {current, current->property("item").value<QObject*>()}) {
        const auto page = m_pages.constFind(object);
        if (page != m_pages.cend() && !page->object.isNull()) {
            countPage(object, page->tab);
            return;
        }
    }
    UIElement* const element = m_book.elementOf(current);
    if (element != nullptr && m_book.typeOf(element) == ElementType::Tab) {
        countElement(current, element, Use::Chosen);
    }
}

/** @param tab its own, or that of a button which is current with it */
void QuickUseSlots::countPage(QObject* page, UIElement* tab) {
    const QObject* const button = m_book.objectOf(tab);
    if (button != nullptr && !button->property("checked").toBool() && m_pageTabs != nullptr) {
        m_pageTabs->separate(page);
        tab = m_pages.value(page).tab;
    }
    QObject* const shown = m_book.objectOf(tab);
    countElement(shown != nullptr ? shown : page, tab, Use::Chosen);
}

void QuickUseSlots::onPressedChanged(QObject* area) {
    const bool isPressed = area->property("pressed").toBool();
    if (QuickClass::of(area).role() != QuickRole::Handler) {
        if (isPressed) {
            countIfOperated(area, Use::Pressed);
        }
        return;
    }
    // It tells of a tap or a long press later.
    if (isPressed && m_judge.isHandlerOperated(area)) {
        m_motions.begin(area, QuickMotions::End::Release);
    }
}

void QuickUseSlots::onTapped(QObject* sender) {
    if (m_judge.isHandlerOperated(sender)) {
        count(sender, Use::Pressed);
    }
}

void QuickUseSlots::onActiveChanged(QObject* handler) {
    // One whose item was given up when it became active is inactive by now.
    const QQuickItem* const item = itemOf(handler);
    const bool isGone = item != nullptr && item->window() == nullptr;
    if ((!handler->property("active").toBool() && !isGone) || !m_judge.isHandlerOperated(handler)) {
        return;
    }
    if (extendsClass(handler, "QQuickTapHandler") || extendsClass(handler, "QQuickHoverHandler")) {
        return; // tells of what it has recognised
    }
    const bool isDragged = extendsClass(handler, "QQuickMultiPointHandler");
    count(handler, isDragged ? Use::Dragged : Use::Pressed);
}

void QuickUseSlots::onTouched(QObject* sender) {
    countIfOperated(sender, Use::Pressed);
}

void QuickUseSlots::onPinched(QObject* sender) {
    countIfOperated(sender, Use::Dragged);
}

void QuickUseSlots::onLinkActivated(QObject* sender) {
    countIfOperated(sender, Use::Followed);
}

void QuickUseSlots::onTriggered(QObject* command) {
    UIElement* const element = m_book.elementOf(command);
    if (element == nullptr || isCounted(element, Use::Triggered) || !m_judge.isTriggered(command)) {
        return;
    }
    tellWay(command, element);
    count(command, Use::Triggered);
}

void QuickUseSlots::tellWay(QObject* command, UIElement* element) {
    Way way = Way::Menu;
    if (m_judge.findWay(command, m_gesture.shortcut(), way)) {
        addWay(element, Attribute::Ways, way);
        addWay(element, Attribute::UsedWays, way);
    }
}

void QuickUseSlots::addWay(UIElement* element, Attribute attribute, Way way) {
    const QString name = QLatin1String(nameOf(way));
    const QString known = m_book.attribute(element, attribute);
    QStringList ways = known.isEmpty() ? QStringList() : known.split(QLatin1Char(' '));
    if (!ways.contains(name)) {
        ways.append(name);
        ways.sort();
        m_book.setAttribute(element, attribute, ways.join(QLatin1Char(' ')));
    }
}

} // namespace UIControls
} // namespace Vorsk
