// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickjudge.h"

#include "qtuicontrols/quick/quickclass.h"
#include "qtuicontrols/quick/quickmotions.h"
#include "qtuicontrols/quick/quickplaces.h"

#include <QKeySequence>
#include <QQuickItem>
#include <QQuickWindow>

namespace Vorsk {
namespace UIControls {

namespace {

QObject* actionOf(const QObject* button) {
    return button->property("action").value<QObject*>();
}

QObject* menuOf(const QObject* item) {
    return item->property("menu").value<QObject*>();
}

bool isList(ElementType type) {
    return type == ElementType::List || type == ElementType::Tree || type == ElementType::Table;
}

bool isByPointer(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        return true;
    default:
        return false;
    }
}

bool isByKey(QEvent::Type type) {
    return type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::Shortcut ||
           type == QEvent::ShortcutOverride;
}

/** What moves when the view is dragged: itself, or in a container of Controls its content item. */
QObject* movingPartOf(QObject* view) {
    if (view->property("moving").isValid()) {
        return view;
    }
    return view->property("contentItem").value<QObject*>();
}

/** Handlers get what the window gets; where a host does not tell that a delivery to an item of it
 * has ended, it may seem to go on. */
const QQuickWindow* windowOf(QObject* receiver) {
    const auto* const item = qobject_cast<const QQuickItem*>(receiver);
    return item != nullptr ? item->window() : qobject_cast<const QQuickWindow*>(receiver);
}

/** A delay button that is held ends by itself, in whatever delivery its animation is advanced: it
 * may be one that starts another. */
bool isHeldToItsEnd(const QObject* object) {
    return object->property("delay").isValid() && object->property("pressed").toBool() &&
           object->property("progress").toReal() >= 1;
}

/** Whether it covers at least half of the other. */
bool fills(const QQuickItem& item, const QQuickItem& row) {
    return item.width() * item.height() >= row.width() * row.height() / 2;
}

} // namespace

QuickJudge::QuickJudge(ElementBook& book, Attribution& attribution)
    : m_book(book)
    , m_attribution(attribution)
    , m_owners(book) {}

bool QuickJudge::isSameControl(const QObject* one, const QObject* other) const {
    return one == other ||
           (one != nullptr && other != nullptr && m_book.elementOf(one) == m_book.elementOf(other));
}

/** What input has begun goes on: the object's own timer, or an animation. */
bool QuickJudge::isLaterStepOf(QObject* object, const Verdict& verdict) const {
    if (verdict.receiver == nullptr || !m_attribution.isArmed(object)) {
        return false;
    }
    return verdict.receiver == object || QuickMotions::advancesAnimations(verdict.receiver) ||
           isHeldToItsEnd(object);
}

bool QuickJudge::isOperated(QObject* control) const {
    const Verdict verdict = m_attribution.verdict();
    switch (verdict.cause) {
    case Attribution::Cause::Program:
        return false;
    case Attribution::Cause::Input:
        return isSameControl(m_owners.controlOf(verdict.receiver), control) ||
               isDragOf(control, verdict);
    case Attribution::Cause::Accessibility:
        return true; // of all that signal during the call, QuickUseSlots finds the one
    case Attribution::Cause::Later:
        return isLaterStepOf(control, verdict);
    }
    return false;
}

bool QuickJudge::isTypedIntoPartOf(QObject* control) const {
    const Verdict verdict = m_attribution.verdict();
    return verdict.cause == Attribution::Cause::Input && verdict.receiver != nullptr &&
           verdict.receiver != control && extendsClass(verdict.receiver, "QQuickTextInput") &&
           isOperated(control);
}

/** A view that takes a drag away from what was pressed does so in the window's delivery. */
bool QuickJudge::isDragOf(QObject* view, const Verdict& verdict) const {
    if (verdict.receiver == nullptr || !verdict.receiver->isWindowType() ||
        !isByPointer(verdict.type)) {
        return false;
    }
    const QObject* const moving = movingPartOf(view);
    return moving != nullptr && QuickMotions::isMoving(moving) &&
           QuickOwners::isWithin(m_attribution.lastInputReceiver(), view);
}

bool QuickJudge::isViewOperated(QObject* view) const {
    const Verdict verdict = m_attribution.verdict();
    if (verdict.cause == Attribution::Cause::Later) {
        return QuickMotions::isMoving(view) && isLaterStepOf(view, verdict);
    }
    if (verdict.cause != Attribution::Cause::Input || isOperated(view)) {
        return isOperated(view);
    }
    QObject* const control = m_owners.controlOf(verdict.receiver);
    return control != nullptr && rowOf(control, view) != nullptr;
}

bool QuickJudge::isContainerOperated(QObject* container) const {
    const Verdict verdict = m_attribution.verdict();
    QObject* const moving = movingPartOf(container);
    if (verdict.cause == Attribution::Cause::Later) {
        return moving != nullptr && QuickMotions::isMoving(moving) &&
               isLaterStepOf(container, verdict);
    }
    if (verdict.cause != Attribution::Cause::Input) {
        return false;
    }
    if (isDragOf(container, verdict)) {
        return true;
    }
    // What is something on a page sets the container, as any other slot might.
    const QObject* const first = QuickOwners::nearest(verdict.receiver, [&](QObject* object) {
        return object == container || object == moving || m_book.elementOf(object) != nullptr;
    });
    return first != nullptr && (first == container || first == moving);
}

bool QuickJudge::isHandlerOperated(QObject* handler) const {
    const Verdict verdict = m_attribution.verdict();
    const QQuickItem* const item = itemOf(handler);
    if (verdict.receiver == nullptr || item == nullptr) {
        return false;
    }
    if (verdict.cause == Attribution::Cause::Later) {
        // A long press, or a finger's move that was kept for the frame.
        return isLaterStepOf(handler, verdict) ||
               (item->window() != nullptr && isLaterStepOf(item->window(), verdict));
    }
    // A slot that ran before may have taken the item out of its window, or have given it up.
    const QQuickWindow* const window = windowOf(verdict.receiver);
    return verdict.cause == Attribution::Cause::Input && window != nullptr &&
           (item->window() == window || item->window() == nullptr);
}

bool QuickJudge::isTriggeredBy(QObject* command, QObject* receiver) const {
    if (receiver == command) {
        return true;
    }
    const QObject* const control = m_owners.controlOf(receiver);
    return control != nullptr && (isSameControl(control, command) || actionOf(control) == command);
}

bool QuickJudge::isTriggered(QObject* command) const {
    const Verdict verdict = m_attribution.verdict();
    if (verdict.cause != Attribution::Cause::Input) {
        return isOperated(command);
    }
    if (verdict.receiver == nullptr) {
        return false;
    }
    if (isTriggeredBy(command, verdict.receiver)) {
        return true;
    }
    // Keys go to the menu; the first generation's menus take the mouse for their items as well.
    const QObject* menu = isByKey(verdict.type) ? menuOf(command) : nullptr;
    if (menu == nullptr && QuickClass::of(command).name() == "QQuickMenuItem1") {
        menu = command->parent();
    }
    return menu != nullptr && QuickOwners::isWithin(verdict.receiver, menu);
}

bool QuickJudge::findWay(QObject* command, const QKeySequence& shortcut, Way& way) const {
    const Verdict verdict = m_attribution.verdict();
    QObject* const control =
        verdict.receiver == nullptr ? nullptr : m_owners.controlOf(verdict.receiver);
    const QObject* const shower = control != nullptr ? control : command;
    if (verdict.type == QEvent::Shortcut) {
        const bool isMnemonic =
            shower->inherits("QQuickAbstractButton") && !shortcut.isEmpty() &&
            shortcut == QKeySequence::mnemonic(shower->property("text").toString());
        if (!isMnemonic) {
            way = Way::Shortcut;
            return true;
        }
    }
    QObject* menu = menuOf(shower) != nullptr ? menuOf(shower) : menuOf(command);
    if (menu == nullptr && QuickClass::of(command).name() == "QQuickMenuItem1") {
        menu = command->parent();
    }
    if (menu == nullptr) {
        way = Way::ToolBar;
        return shower != command && m_book.elementOf(shower) != nullptr;
    }
    // A menu that something visible brings up belongs to it; the others come up where one clicks.
    const bool isShown = QuickOwners::nearest(QuickOwners::outerOf(menu), [](QObject* outer) {
                             return QuickClass::of(outer).type() == ElementType::Button ||
                                    outer->inherits("QQuickAbstractButton") ||
                                    outer->inherits("QQuickMenuBar1");
                         }) != nullptr;
    way = isShown ? Way::Menu : Way::ContextMenu;
    return true;
}

QQuickItem* QuickJudge::rowOf(QObject* control, QObject* view) const {
    QQuickItem* const item = itemOf(control);
    auto* const content = view->property("contentItem").value<QQuickItem*>();
    if (item == nullptr) {
        return nullptr;
    }
    QQuickItem* row = item;
    while (row != nullptr && row->parentItem() != content && row->parentItem() != view) {
        row = row->parentItem();
    }
    if (row == nullptr || row == view->property("headerItem").value<QQuickItem*>() ||
        row == view->property("footerItem").value<QQuickItem*>()) {
        return nullptr;
    }
    const bool isArea = m_book.typeOf(m_book.elementOf(control)) == ElementType::Area;
    return row == item || (isArea && fills(*item, *row)) ? row : nullptr;
}

QObject* QuickJudge::viewAround(QObject* control) const {
    QObject* const around =
        QuickOwners::nearest(QuickOwners::outerOf(control), [this](QObject* object) {
            const UIElement* const element = m_book.elementOf(object);
            return element != nullptr &&
                   (isList(m_book.typeOf(element)) || isView(m_book.typeOf(element)));
        });
    return around != nullptr && isList(m_book.typeOf(m_book.elementOf(around))) ? around : nullptr;
}

} // namespace UIControls
} // namespace Vorsk
