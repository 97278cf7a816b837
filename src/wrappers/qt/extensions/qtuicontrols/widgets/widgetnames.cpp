// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/widgetnames.h"

#include "qtuicontrols/widgets/widgetclass.h"
#include "qtuicontrols/widgets/widgetlabels.h"
#include "tracking/classname.h"
#include "tracking/mnemonics.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QWizardPage>

namespace Vorsk {
namespace UIControls {

using UICoverage::stripMnemonics;

namespace {

QString nullIfEmpty(const QString& text) {
    return text.isEmpty() ? QString() : text;
}

/** A window's title without the mark that stands for "modified". */
QString windowTitleOf(const QWidget* widget) {
    QString title = widget->windowTitle();
    title.remove(QStringLiteral("[*]"));
    return title.trimmed();
}

/** What brings the menu up says what it is for, where it has no title of its own. */
QString openerOf(const QMenu* menu) {
    const QAction* const action = menu->menuAction();
    if (!action->toolTip().isEmpty()) {
        return action->toolTip();
    }
    const QList<QWidget*> openers = action->associatedWidgets();
    for (const QWidget* const opener : openers) {
        const QString caption = captionOf(opener);
        if (!caption.isNull()) {
            return caption;
        }
    }
    return {};
}

QString titleOfMenu(const QMenu* menu) {
    const QString title = stripMnemonics(menu->title());
    return title.isEmpty() ? openerOf(menu) : title;
}

void add(Description& what, Attribute attribute, const QString& value) {
    if (!value.isEmpty()) {
        what.attributes.append({attribute, value});
    }
}

bool isReadOnly(const QWidget* widget) {
    switch (classOf(widget)) {
    case WidgetClass::LineEdit:
        return static_cast<const QLineEdit*>(widget)->isReadOnly();
    case WidgetClass::SpinBox:
        return static_cast<const QAbstractSpinBox*>(widget)->isReadOnly();
    case WidgetClass::TextBrowser:
    case WidgetClass::TextEdit: {
        const auto* const rich = qobject_cast<const QTextEdit*>(widget);
        return rich != nullptr ? rich->isReadOnly()
                               : static_cast<const QPlainTextEdit*>(widget)->isReadOnly();
    }
    case WidgetClass::OwnEditor:
        return widget->property("readOnly").toBool();
    default:
        return false;
    }
}

} // namespace

QString captionOf(const QWidget* widget) {
    switch (classOf(widget)) {
    case WidgetClass::Button:
    case WidgetClass::ToolButton:
    case WidgetClass::RadioButton:
    case WidgetClass::CheckBox:
    case WidgetClass::ToolBoxButton:
        return nullIfEmpty(stripMnemonics(static_cast<const QAbstractButton*>(widget)->text()));
    case WidgetClass::GroupBox:
        return nullIfEmpty(stripMnemonics(static_cast<const QGroupBox*>(widget)->title()));
    default:
        return {};
    }
}

QString titleOf(const QWidget* widget) {
    switch (classOf(widget)) {
    case WidgetClass::Menu:
        return nullIfEmpty(titleOfMenu(static_cast<const QMenu*>(widget)));
    case WidgetClass::WizardPage:
        return nullIfEmpty(static_cast<const QWizardPage*>(widget)->title());
    case WidgetClass::Dock:
    case WidgetClass::MdiWindow:
        return nullIfEmpty(windowTitleOf(widget));
    default:
        return widget->isWindow() ? nullIfEmpty(windowTitleOf(widget)) : QString();
    }
}

QString placeholderOf(const QWidget* widget) {
    switch (classOf(widget)) {
    case WidgetClass::LineEdit:
        return nullIfEmpty(static_cast<const QLineEdit*>(widget)->placeholderText());
    case WidgetClass::TextEdit: {
        const auto* const rich = qobject_cast<const QTextEdit*>(widget);
        return nullIfEmpty(rich != nullptr
                               ? rich->placeholderText()
                               : static_cast<const QPlainTextEdit*>(widget)->placeholderText());
    }
    case WidgetClass::ComboBox: {
        const QLineEdit* const edit = static_cast<const QComboBox*>(widget)->lineEdit();
        return edit == nullptr ? QString() : nullIfEmpty(edit->placeholderText());
    }
    default:
        return {};
    }
}

QString objectNameOf(const QWidget* widget) {
    const QString name = widget->objectName();
    const bool isGivenByQt =
        name.startsWith(QLatin1String("qt_")) || name.startsWith(QLatin1String("__qt_"));
    return name.isEmpty() || isGivenByQt ? QString() : name;
}

bool isOperable(const QWidget* widget) {
    return widget->isEnabled() && !isReadOnly(widget);
}

bool isHiddenWithin(const QWidget* widget, const QWidget* view) {
    for (const QWidget* at = widget; at != nullptr && at != view; at = at->parentWidget()) {
        if (at->isHidden()) {
            return true;
        }
        if (at->isWindow()) {
            break;
        }
    }
    return false;
}

bool isSensitive(const QWidget* widget) {
    if (classOf(widget) == WidgetClass::LineEdit &&
        static_cast<const QLineEdit*>(widget)->echoMode() != QLineEdit::Normal) {
        return true;
    }
    return widget->testAttribute(Qt::WA_InputMethodEnabled) &&
           (widget->inputMethodHints() & Qt::ImhHiddenText) != 0;
}

Description describe(const QWidget* widget, ElementType type, const QWidget* view,
                     WidgetLabels& labels) {
    Description what;
    what.type = type;
    what.className = UICoverage::className(widget);
    what.text = isView(type) ? titleOf(widget) : captionOf(widget);
    add(what, Attribute::ObjectName, objectNameOf(widget));
    add(what, Attribute::ToolTip, widget->toolTip());
    add(what, Attribute::AccessibleName, widget->accessibleName());
    add(what, Attribute::Description,
        widget->accessibleDescription().isEmpty() ? widget->whatsThis()
                                                  : widget->accessibleDescription());
    if (isView(type)) {
        return what;
    }
    add(what, Attribute::Placeholder, placeholderOf(widget));
    if (what.text.isNull()) {
        add(what, Attribute::Label, labels.labelOf(widget));
    }
    if (!isOperable(widget)) {
        add(what, Attribute::Enabled, QStringLiteral("false"));
    }
    if (widget != view && isHiddenWithin(widget, view)) {
        add(what, Attribute::Hidden, QStringLiteral("true"));
    }
    if (isSensitive(widget)) {
        add(what, Attribute::Sensitive, QStringLiteral("true"));
    }
    return what;
}

} // namespace UIControls
} // namespace Vorsk
