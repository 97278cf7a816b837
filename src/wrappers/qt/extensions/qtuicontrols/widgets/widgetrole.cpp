// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/widgetrole.h"

#include "qtuicontrols/widgets/commands.h"
#include "qtuicontrols/widgets/widgetowners.h"

#include <QAction>
#include <QGroupBox>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>
#include <QToolBar>
#include <QToolButton>
#include <QVariant>
#include <QWidgetAction>

namespace Vorsk {
namespace UIControls {

namespace {

/** Whether a press on the button does nothing but open the menu. */
bool opensMenuOnly(const QToolButton* button) {
    return button->popupMode() == QToolButton::InstantPopup && menuOf(button) != nullptr;
}

/** Whether the button only offers its action, which is the command. */
bool isCommandsButton(const QToolButton* button) {
    return button->defaultAction() != nullptr && !opensMenuOnly(button);
}

/** Without those that show a widget in their place: that is a control by itself. */
QList<QAction*> withoutEmbedded(const QList<QAction*>& actions) {
    QList<QAction*> others;
    for (QAction* action : actions) {
        const auto* const embedding = qobject_cast<const QWidgetAction*>(action);
        if (embedding == nullptr || embedding->defaultWidget() == nullptr) {
            others.append(action);
        }
    }
    return others;
}

QList<QAction*> buttonActionsOf(const QToolBar* bar) {
    QList<QAction*> shown;
    for (QAction* action : bar->actions()) {
        const auto* const button = qobject_cast<QToolButton*>(bar->widgetForAction(action));
        if (button != nullptr && button->defaultAction() == action && isCommandsButton(button)) {
            shown.append(action);
        }
    }
    return shown;
}

/** Its own action, other than where its tool bar tells of it already. */
QList<QAction*> actionsOfButton(const QToolButton* button) {
    QAction* const action = button->defaultAction();
    const auto* const bar = qobject_cast<const QToolBar*>(button->parentWidget());
    if (!isCommandsButton(button) || (bar != nullptr && bar->widgetForAction(action) == button)) {
        return {};
    }
    return {action};
}

/** Those that are shown as icons in the input, other than what clears it. */
QList<QAction*> iconActionsOf(const QWidget* edit) {
    QList<QAction*> shown;
    for (const QObject* child : edit->children()) {
        const auto* const button = qobject_cast<const QToolButton*>(child);
        QAction* const action = button == nullptr ? nullptr : button->defaultAction();
        if (action != nullptr && action->objectName() != QLatin1String("_q_qlineeditclearaction")) {
            shown.append(action);
        }
    }
    return shown;
}

bool isEditable(const QWidget* textEdit) {
    const auto* const rich = qobject_cast<const QTextEdit*>(textEdit);
    return rich != nullptr ? !rich->isReadOnly()
                           : !static_cast<const QPlainTextEdit*>(textEdit)->isReadOnly();
}

} // namespace

bool isControl(const QWidget* widget, WidgetClass cls, ElementType* type) {
    switch (cls) {
    case WidgetClass::Button:
        *type = ElementType::Button;
        return true;
    case WidgetClass::ToolButton:
        *type = ElementType::Button;
        return !isCommandsButton(static_cast<const QToolButton*>(widget));
    case WidgetClass::RadioButton:
        *type = ElementType::RadioButton;
        return true;
    case WidgetClass::CheckBox:
        *type = ElementType::CheckBox;
        return true;
    case WidgetClass::GroupBox:
        *type = ElementType::GroupBox;
        return static_cast<const QGroupBox*>(widget)->isCheckable();
    case WidgetClass::ComboBox:
        *type = ElementType::ComboBox;
        return true;
    case WidgetClass::LineEdit:
        *type = ElementType::TextInput;
        return !static_cast<const QLineEdit*>(widget)->isReadOnly();
    case WidgetClass::TextBrowser:
    case WidgetClass::TextEdit:
        *type = ElementType::TextInput;
        return isEditable(widget);
    case WidgetClass::OwnEditor:
        *type = ElementType::TextInput;
        return !widget->property("readOnly").toBool();
    case WidgetClass::KeySequence:
        *type = ElementType::TextInput;
        return true;
    case WidgetClass::SpinBox:
        *type = ElementType::SpinBox;
        return true;
    case WidgetClass::Slider:
        *type = ElementType::Slider;
        return true;
    case WidgetClass::Dial:
        *type = ElementType::Dial;
        return true;
    case WidgetClass::ToolBoxButton:
        *type = ElementType::Tab;
        return true;
    case WidgetClass::List:
        *type = ElementType::List;
        return true;
    case WidgetClass::Tree:
        *type = ElementType::Tree;
        return true;
    case WidgetClass::Table:
    case WidgetClass::Calendar:
        *type = ElementType::Table;
        return true;
    default:
        return false;
    }
}

bool isPartByPlace(const QWidget* widget, WidgetClass cls) {
    const QWidget* const parent = widget->parentWidget();
    if (parent == nullptr) {
        return false;
    }
    if (cls == WidgetClass::ToolButton) {
        if (classOf(parent) == WidgetClass::MenuBar) {
            return widget->objectName() == QLatin1String("qt_menubar_ext_button");
        }
        // What scrolls the tabs of a bar that has more than it can show.
        return classOf(parent) == WidgetClass::TabBar &&
               widget->metaObject() == &QToolButton::staticMetaObject &&
               static_cast<const QToolButton*>(widget)->autoRepeat();
    }
    return WidgetOwners::isItemEditor(widget);
}

bool liesInControl(const QWidget* widget) {
    for (const QWidget* inner = widget; inner->parentWidget() != nullptr && !inner->isWindow();
         inner = inner->parentWidget()) {
        const WidgetClass outer = classOf(inner->parentWidget());
        if (!isEntered(outer) || isPartByPlace(inner->parentWidget(), outer)) {
            return true;
        }
    }
    return false;
}

QMenu* menuOf(const QWidget* button) {
    if (const auto* const push = qobject_cast<const QPushButton*>(button)) {
        return push->menu();
    }
    const auto* const tool = qobject_cast<const QToolButton*>(button);
    if (tool == nullptr) {
        return nullptr;
    }
    if (tool->menu() != nullptr) {
        return tool->menu();
    }
    const QAction* const action = tool->defaultAction();
    return action == nullptr ? nullptr : action->menu();
}

ReachedActions actionsReachedThrough(const QWidget* widget, WidgetClass cls) {
    switch (cls) {
    case WidgetClass::Menu:
        return {withoutEmbedded(widget->actions()), Commands::wayThrough(widget), true};
    case WidgetClass::MenuBar:
        return {widget->actions(), Way::Menu, true};
    case WidgetClass::ToolBar:
        return {buttonActionsOf(static_cast<const QToolBar*>(widget)), Way::ToolBar, true};
    case WidgetClass::ToolButton:
        return {actionsOfButton(static_cast<const QToolButton*>(widget)), Way::ToolBar, true};
    case WidgetClass::LineEdit: {
        const QList<QAction*> shown = iconActionsOf(widget);
        if (!shown.isEmpty()) {
            return {shown, Way::ToolBar, true};
        }
        break;
    }
    case WidgetClass::MdiWindow:
        return {}; // its title bar's
    default:
        break;
    }
    if (widget->contextMenuPolicy() == Qt::ActionsContextMenu) {
        return {widget->actions(), Way::ContextMenu, false};
    }
    QList<QAction*> withShortcut;
    for (QAction* action : widget->actions()) {
        if (!action->shortcut().isEmpty()) {
            withShortcut.append(action);
        }
    }
    return {withShortcut, Way::Shortcut, false};
}

} // namespace UIControls
} // namespace Vorsk
