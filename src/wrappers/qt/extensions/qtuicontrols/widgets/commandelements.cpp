// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/commandelements.h"

#include "qtuicontrols/widgets/textmenus.h"
#include "tracking/classname.h"
#include "tracking/mnemonics.h"

#include <QAction>
#include <QShortcut>
#include <QWidget>
#include <QWidgetAction>

namespace Vorsk {
namespace UIControls {

using UICoverage::className;
using UICoverage::stripMnemonics;

namespace {

bool standsForAWidget(const QAction* action) {
    const auto* const widgets = qobject_cast<const QWidgetAction*>(action);
    return widgets != nullptr && widgets->defaultWidget() != nullptr;
}

/** In a tool bar, an action with a menu can be triggered besides, or opens its menu. */
bool isCommand(const QAction* action, Way way) {
    return !action->isSeparator() && !standsForAWidget(action) && !isTextAction(action) &&
           (action->menu() == nullptr || way == Way::ToolBar) &&
           (way != Way::Shortcut || !action->shortcut().isEmpty());
}

/** What follows a tab is the shortcut that the menu shows. */
QString captionOf(const QString& text) {
    return stripMnemonics(text.section(QLatin1Char('\t'), 0, 0));
}

QString hiddenOf(const QAction* action, WaySet ways) {
    return action->isVisible() && !ways.isEmpty() ? QString() : QStringLiteral("true");
}

QString enabledOf(const QAction* action) {
    return action->isEnabled() ? QString() : QStringLiteral("false");
}

/** Null unless it says more than the caption. */
QString toolTipOf(const QAction* action, const QString& caption) {
    const QString toolTip = action->toolTip();
    return toolTip.isEmpty() || toolTip == caption ? QString() : toolTip;
}

void append(Description& what, Attribute attribute, const QString& value) {
    if (!value.isEmpty()) {
        what.attributes.append({attribute, value});
    }
}

} // namespace

CommandElements::CommandElements(ElementBook& book)
    : m_book(book) {}

CommandElements::Known* CommandElements::knownOf(const QObject* command) {
    const auto known = m_known.find(command);
    // Another may live at the address of one that has died.
    return known == m_known.end() || known->object != command ? nullptr : &*known;
}

CommandElements::Known& CommandElements::learn(QObject* command, UIElement* element) {
    Known& known = m_known[command];
    known = Known();
    known.object = command;
    known.element = element;
    return known;
}

WaySet CommandElements::waysOf(const Known& known, const QAction* action) {
    WaySet ways;
    for (std::size_t i = 0; i < known.listed.size(); ++i) {
        if (known.listed.at(i) > 0 && static_cast<Way>(i) != Way::Shortcut) {
            ways.add(static_cast<Way>(i));
        }
    }
    if (!action->shortcut().isEmpty() && !action->associatedWidgets().isEmpty()) {
        ways.add(Way::Shortcut);
    }
    return ways;
}

UIElement* CommandElements::add(QAction* action, Way way, UIElement* view) {
    if (Known* const known = knownOf(action)) {
        ++known->listed.at(static_cast<std::size_t>(way));
        refresh(action);
        return known->element;
    }
    if (!isCommand(action, way) || view == nullptr) {
        return nullptr;
    }
    Known& known = learn(action, nullptr);
    known.text = action->text();
    ++known.listed.at(static_cast<std::size_t>(way));
    const WaySet ways = waysOf(known, action);
    Description what;
    what.type = ElementType::Command;
    what.className = className(action);
    what.text = captionOf(known.text);
    what.uses = {Use::Triggered};
    append(what, Attribute::Enabled, enabledOf(action));
    append(what, Attribute::Hidden, hiddenOf(action, ways));
    append(what, Attribute::ObjectName, action->objectName());
    append(what, Attribute::ToolTip, toolTipOf(action, what.text));
    append(what, Attribute::Description, action->whatsThis());
    append(what, Attribute::Ways, ways.text());
    UIElement* const element = m_book.add(action, what, view);
    // Whoever takes the record may have come back here.
    if (Known* const added = knownOf(action)) {
        added->element = element;
    }
    return element;
}

UIElement* CommandElements::add(QShortcut* shortcut, UIElement* view) {
    if (Known* const known = knownOf(shortcut)) {
        return known->element;
    }
    if (view == nullptr || shortcut->key().isEmpty()) {
        return nullptr;
    }
    Description what;
    what.type = ElementType::Command;
    what.className = className(shortcut);
    what.text = shortcut->key().toString(QKeySequence::PortableText);
    what.uses = {Use::Triggered};
    append(what, Attribute::Enabled, shortcut->isEnabled() ? QString() : QStringLiteral("false"));
    append(what, Attribute::ObjectName, shortcut->objectName());
    append(what, Attribute::Description, shortcut->whatsThis());
    append(what, Attribute::Ways, QLatin1String(nameOf(Way::Shortcut)));
    UIElement* const element = m_book.add(shortcut, what, view);
    learn(shortcut, element);
    return element;
}

void CommandElements::remove(QAction* action, Way way) {
    Known* const known = knownOf(action);
    if (known == nullptr) {
        return;
    }
    int& listed = known->listed.at(static_cast<std::size_t>(way));
    listed = qMax(0, listed - 1);
    refresh(action);
}

void CommandElements::refresh(const QAction* action) {
    Known* const known = knownOf(action);
    UIElement* const element = known == nullptr ? nullptr : known->element;
    if (element == nullptr) {
        return;
    }
    const WaySet ways = waysOf(*known, action);
    // Nothing of what is known may be used once a record is told: its taker may come back here.
    if (known->text != action->text()) {
        known->text = action->text();
        m_book.setText(element, captionOf(action->text()));
    }
    m_book.setAttribute(element, Attribute::Enabled, enabledOf(action));
    m_book.setAttribute(element, Attribute::Hidden, hiddenOf(action, ways));
    m_book.setAttribute(element, Attribute::Ways, ways.text());
}

/** The view that the widget is or lies in. */
UIElement* CommandElements::viewAround(const QWidget* widget) const {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        if (UIElement* const element = m_book.elementOf(widget)) {
            return m_book.viewOf(element);
        }
    }
    return nullptr;
}

/** That of the first widget which lists the action and lies in a view. */
UIElement* CommandElements::viewOf(const QAction* action) const {
    const QList<QWidget*> listers = action->associatedWidgets();
    for (const QWidget* const lister : listers) {
        if (UIElement* const view = viewAround(lister)) {
            return view;
        }
    }
    return nullptr;
}

UIElement* CommandElements::findOrAdd(QShortcut* shortcut) {
    return add(shortcut, viewAround(shortcut->parentWidget()));
}

UIElement* CommandElements::findOrAdd(QAction* action, Way way) {
    if (const Known* const known = knownOf(action)) {
        return known->element;
    }
    return add(action, way, viewOf(action));
}

void CommandElements::count(UIElement* element, Way way) {
    WaySet used = WaySet::of(m_book.attribute(element, Attribute::UsedWays));
    used.add(way);
    m_book.setAttribute(element, Attribute::UsedWays, used.text());
    m_book.countUse(element, Use::Triggered);
}

} // namespace UIControls
} // namespace Vorsk
