// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/commands.h"

#include "qtuicontrols/attribution.h"
#include "qtuicontrols/controlstracker.h"
#include "qtuicontrols/eventkinds.h"
#include "qtuicontrols/widgets/lazyconnections.h"
#include "qtuicontrols/widgets/menuinput.h"

#include <QAction>
#include <QActionEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QShortcut>
#include <QShortcutEvent>
#include <QToolButton>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Vorsk {
namespace UIControls {

using Cause = Attribution::Cause;
using UICoverage::methodNumber;

namespace {

bool mayTrigger(QEvent::Type type) {
    return type == QEvent::MouseButtonRelease || type == QEvent::KeyPress ||
           type == QEvent::KeyRelease || type == QEvent::Shortcut;
}

/** A window that is not brought up by menus themselves. */
bool isDialogOrWindow(const QObject* object) {
    if (!object->isWidgetType()) {
        return false;
    }
    const auto* const widget = static_cast<const QWidget*>(object);
    const Qt::WindowFlags type = widget->windowFlags() & Qt::WindowType_Mask;
    return type == Qt::Window || type == Qt::Dialog || type == Qt::Sheet || type == Qt::Tool;
}

} // namespace

Commands::Commands(const TrackerServices& services)
    : m_attribution(services.attribution)
    , m_elements(services.book) {}

UIElement* Commands::add(QAction* action, Way way, UIElement* view) {
    UIElement* const element = m_elements.add(action, way, view);
    if (element != nullptr && m_watchesAll) {
        watch(action);
    }
    return element;
}

UIElement* Commands::add(QShortcut* shortcut, UIElement* view) {
    return m_elements.add(shortcut, view);
}

void Commands::remove(QAction* action, Way way) {
    m_elements.remove(action, way);
}

void Commands::watchAll() {
    if (!m_watchesAll) {
        m_watchesAll = true;
        m_elements.forEachAction([this](const QAction* action) { watch(action); });
    }
}

void Commands::handleEvent(QObject* object, QEvent* event) {
    const QEvent::Type type = event->type();
    if (isInput(type)) {
        if (type == QEvent::MouseMove) {
            if (static_cast<QMouseEvent*>(event)->buttons() != Qt::NoButton) {
                handlePointer(object, event);
            }
        } else {
            handleInput(object, event);
        }
        return;
    }
    if (type == QEvent::ActionChanged) {
        m_elements.refresh(static_cast<QActionEvent*>(event)->action());
    } else if (type == QEvent::Show && !m_expected.empty() && isDialogOrWindow(object)) {
        countImminent();
    }
}

void Commands::handleInput(QObject* object, QEvent* event) {
    if (!m_expected.empty()) {
        countDead();
        for (Expected& expected : m_expected) {
            expected.isImminent = false;
        }
    }
    const QEvent::Type type = event->type();
    if (type == QEvent::Shortcut) {
        handleShortcut(object, event);
    }
    if (!object->isWidgetType()) {
        return;
    }
    if (type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick) {
        handlePointer(object, event);
        return;
    }
    if (!mayTrigger(type)) {
        return;
    }
    if (QAction* const action = meantMenuAction(object, event)) {
        // A menu that has come up below the mouse takes no notice of the button's going up.
        // An entry with a sub menu triggers nothing.
        if (action->menu() == nullptr &&
            (type != QEvent::MouseButtonRelease || m_pressedMenu == object)) {
            expect(action, wayThrough(static_cast<QWidget*>(object)));
        }
    } else if (auto* const button = qobject_cast<QToolButton*>(object)) {
        expectButton(button, event);
    }
}

/** A button of the mouse is down. */
void Commands::handlePointer(QObject* object, QEvent* event) {
    if (qobject_cast<QMenu*>(object) != nullptr || qobject_cast<QMenuBar*>(object) != nullptr) {
        m_pressedMenu = object;
    } else if (event->type() != QEvent::MouseMove) {
        if (auto* const button = qobject_cast<QToolButton*>(object)) {
            expectMenuOf(button);
        }
    }
}

/** A shortcut that gets here triggers; nothing else can come of it. */
void Commands::handleShortcut(QObject* object, QEvent* event) {
    if (static_cast<QShortcutEvent*>(event)->isAmbiguous()) {
        return;
    }
    if (auto* const action = qobject_cast<QAction*>(object)) {
        UIElement* const element =
            action->isEnabled() ? m_elements.findOrAdd(action, Way::Shortcut) : nullptr;
        if (element != nullptr) {
            m_elements.count(element, Way::Shortcut);
        }
    } else if (auto* const shortcut = qobject_cast<QShortcut*>(object)) {
        UIElement* const element = shortcut->isEnabled() ? m_elements.findOrAdd(shortcut) : nullptr;
        if (element != nullptr) {
            m_elements.count(element, Way::Shortcut);
        }
    }
}

void Commands::expectButton(QToolButton* button, QEvent* event) {
    QAction* const action = button->defaultAction();
    if (action == nullptr || !button->isEnabled()) {
        return;
    }
    if (event->type() == QEvent::Shortcut) {
        // It is pressed for a moment; a timer triggers.
        m_attribution.arm(button);
    }
    if (event->type() != QEvent::MouseButtonRelease || button->isDown()) {
        expect(action, Way::ToolBar);
    }
}

void Commands::expectMenuOf(QToolButton* button) {
    static const int signal = methodNumber(QMenu::staticMetaObject, "aboutToShow()");
    static const int slot = methodNumber(staticMetaObject, "menuShows()");
    const QAction* const action = button->defaultAction();
    if (action == nullptr || action->menu() == nullptr || m_elements.elementOf(action) == nullptr) {
        return;
    }
    connectOnce(action->menu(), signal, this, slot);
    if (button->popupMode() == QToolButton::DelayedPopup) {
        m_attribution.arm(button);
    }
}

void Commands::expect(QAction* action, Way way) {
    constexpr std::size_t most = 16; // those of dialogs in dialogs, and what came to nothing
    UIElement* const element =
        action->isEnabled() && !action->isSeparator() ? m_elements.findOrAdd(action, way) : nullptr;
    if (element == nullptr) {
        return;
    }
    watch(action);
    m_expected.erase(
        std::remove_if(m_expected.begin(), m_expected.end(),
                       [action](const Expected& known) { return known.action == action; }),
        m_expected.end());
    if (m_expected.size() == most) {
        m_expected.erase(m_expected.begin());
    }
    m_expected.push_back({action, element, way});
}

void Commands::watch(const QAction* action) {
    static const int signal = methodNumber(QAction::staticMetaObject, "triggered(bool)");
    static const int slot = methodNumber(staticMetaObject, "triggered()");
    connectOnce(action, signal, this, slot);
}

/** Whether the input that goes on is one that triggers the action. */
bool Commands::isMeant(const QAction* action) const {
    const Attribution::Verdict verdict = m_attribution.verdict();
    if (verdict.cause == Cause::Later) {
        const auto* const button = qobject_cast<QToolButton*>(verdict.receiver);
        return button != nullptr && m_attribution.isArmed(button) &&
               button->defaultAction() == action;
    }
    if (verdict.cause != Cause::Input) {
        return false;
    }
    if (const auto* const button = qobject_cast<QToolButton*>(verdict.receiver)) {
        return button->defaultAction() == action;
    }
    // A context menu may be gone by now.
    return verdict.receiver == nullptr || qobject_cast<QMenu*>(verdict.receiver) != nullptr ||
           qobject_cast<QMenuBar*>(verdict.receiver) != nullptr;
}

void Commands::triggered() {
    auto* const action = qobject_cast<QAction*>(sender());
    if (action == nullptr) {
        return;
    }
    if (m_attribution.verdict().cause == Cause::Accessibility) {
        UIElement* const element = m_elements.elementOf(action);
        if (element != nullptr && m_attribution.isOperatedByClient(action)) {
            m_elements.count(element, Way::Menu);
        }
        return;
    }
    const auto expected =
        std::find_if(m_expected.begin(), m_expected.end(),
                     [action](const Expected& candidate) { return candidate.action == action; });
    if (expected == m_expected.end() || !isMeant(action)) {
        return;
    }
    const Expected meant = *expected;
    m_expected.erase(expected);
    if (auto* const button = qobject_cast<QToolButton*>(m_attribution.verdict().receiver)) {
        m_attribution.disarm(button);
    }
    m_elements.count(meant.element, meant.way);
}

/** A tool button brings up the menu of its action. */
void Commands::menuShows() {
    const auto* const menu = qobject_cast<QMenu*>(sender());
    const Attribution::Verdict verdict = m_attribution.verdict();
    const auto* const button = qobject_cast<QToolButton*>(verdict.receiver);
    if (menu == nullptr || button == nullptr || button->defaultAction() == nullptr ||
        button->defaultAction()->menu() != menu ||
        (verdict.cause != Cause::Input && !m_attribution.isArmed(button))) {
        return;
    }
    if (UIElement* const element = m_elements.elementOf(button->defaultAction())) {
        m_elements.count(element, Way::ToolBar);
    }
}

/** A window shows; where that is in the course of the input, the input has triggered. */
void Commands::countImminent() {
    // Of what is no input, only deliveries within one that is are known.
    const Attribution::Verdict verdict = m_attribution.verdict();
    if (verdict.type != QEvent::Show && verdict.cause != Cause::Input) {
        return;
    }
    std::vector<Expected> imminent;
    const auto first =
        std::stable_partition(m_expected.begin(), m_expected.end(),
                              [](const Expected& expected) { return !expected.isImminent; });
    std::move(first, m_expected.end(), std::back_inserter(imminent));
    m_expected.erase(first, m_expected.end());
    for (const Expected& meant : imminent) {
        m_elements.count(meant.element, meant.way);
    }
}

/** An action that has died in its own slot was triggered; others are no longer meant. */
void Commands::countDead() {
    std::vector<Expected> dead;
    const auto isDead = [&](const Expected& expected) {
        if (!expected.action.isNull()) {
            return false;
        }
        dead.push_back(expected);
        return true;
    };
    m_expected.erase(std::remove_if(m_expected.begin(), m_expected.end(), isDead),
                     m_expected.end());
    for (const Expected& meant : dead) {
        m_elements.count(meant.element, meant.way);
    }
}

} // namespace UIControls
} // namespace Vorsk
