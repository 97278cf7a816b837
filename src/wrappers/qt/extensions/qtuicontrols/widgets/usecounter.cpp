// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/usecounter.h"

#include "qtuicontrols/controlstracker.h"
#include "qtuicontrols/widgets/textmenus.h"

#include <QMenu>
#include <QWidget>

#include <algorithm>

namespace Vorsk {
namespace UIControls {

UseCounter::UseCounter(const TrackerServices& services)
    : m_book(services.book)
    , m_attribution(services.attribution)
    , m_owners(services.book) {}

ElementType UseCounter::typeOf(const QWidget* control) {
    UIElement* const element = m_book.elementOf(control);
    return element == nullptr ? ElementType::Area : m_book.typeOf(element);
}

bool UseCounter::isOperated(QWidget* control) {
    if (control == nullptr) {
        return false;
    }
    const Attribution::Verdict verdict = m_attribution.verdict();
    switch (verdict.cause) {
    case Attribution::Cause::Program:
        return false;
    case Attribution::Cause::Accessibility:
        return m_attribution.isOperatedByClient(control);
    case Attribution::Cause::Later:
        return m_attribution.isArmed(control) && m_owners.controlOf(verdict.receiver) == control;
    case Attribution::Cause::Input:
        break;
    }
    if (verdict.type == QEvent::MouseMove && m_gesture.isHovering()) {
        return false;
    }
    if (m_owners.controlOf(verdict.receiver) != control) {
        return false;
    }
    // What the application has added to the menu of a text is a command.
    return qobject_cast<QMenu*>(verdict.receiver) == nullptr ||
           isOwnAction(m_gesture.menuAction(), control);
}

void UseCounter::count(QWidget* control, Use use) {
    if (UIElement* const element = m_book.elementOf(control)) {
        count(element, use, placeOf(control));
    }
}

void UseCounter::count(UIElement* element, Use use, const QRect& place) {
    if (!isFirst(element, use)) {
        return;
    }
    if (!place.isNull()) {
        m_book.setPlace(element, place);
    }
    m_book.announceUse(element, use);
    m_book.countUse(element, use);
}

void UseCounter::countOperated(QWidget* control, Use use) {
    if (isOperated(control)) {
        count(control, use);
    }
}

bool UseCounter::isFirst(const UIElement* element, Use use) {
    if (m_serial != m_gesture.serial()) {
        m_serial = m_gesture.serial();
        m_counted.clear();
    }
    const bool isKnown =
        std::any_of(m_counted.cbegin(), m_counted.cend(), [&](const Counted& counted) {
            return counted.element == element && counted.use == use;
        });
    if (!isKnown) {
        m_counted.push_back({element, use});
    }
    return !isKnown;
}

QRect UseCounter::placeOf(const QWidget* widget) {
    return placeIn(widget, widget->rect());
}

QRect UseCounter::placeIn(const QWidget* widget, const QRect& rectangle) {
    return rectangle.translated(widget->mapTo(widget->window(), QPoint()));
}

} // namespace UIControls
} // namespace Vorsk
