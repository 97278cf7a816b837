// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicoverage/names.h"

namespace Vorsk {
namespace UICoverage {

using UIAbstraction::StandardType;
using UIAbstraction::UIEvent;

namespace Events {

const UIEvent& checked() {
    static const UIEvent event(QStringLiteral("checked"));
    return event;
}

const UIEvent& clicked() {
    static const UIEvent event(QStringLiteral("clicked"));
    return event;
}

const UIEvent& confirmed() {
    static const UIEvent event(QStringLiteral("confirmed"));
    return event;
}

const UIEvent& partiallyChecked() {
    static const UIEvent event(QStringLiteral("partiallyChecked"));
    return event;
}

const UIEvent& shown() {
    static const UIEvent event(QStringLiteral("shown"));
    return event;
}

const UIEvent& textChanged() {
    static const UIEvent event(QStringLiteral("textChanged"));
    return event;
}

const UIEvent& textEdited() {
    static const UIEvent event(QStringLiteral("textEdited"));
    return event;
}

const UIEvent& triggered() {
    static const UIEvent event(QStringLiteral("triggered"));
    return event;
}

const UIEvent& unchecked() {
    static const UIEvent event(QStringLiteral("unchecked"));
    return event;
}

} // namespace Events

namespace StandardTypes {

const StandardType& button() {
    static const StandardType type(QStringLiteral("Button"));
    return type;
}

const StandardType& checkBox() {
    static const StandardType type(QStringLiteral("CheckBox"));
    return type;
}

const StandardType& dialog() {
    static const StandardType type(QStringLiteral("Dialog"));
    return type;
}

const StandardType& menu() {
    static const StandardType type(QStringLiteral("Menu"));
    return type;
}

const StandardType& menuBar() {
    static const StandardType type(QStringLiteral("MenuBar"));
    return type;
}

const StandardType& menuItem() {
    static const StandardType type(QStringLiteral("MenuItem"));
    return type;
}

const StandardType& table() {
    static const StandardType type(QStringLiteral("Table"));
    return type;
}

const StandardType& textInput() {
    static const StandardType type(QStringLiteral("TextInput"));
    return type;
}

const StandardType& toolBar() {
    static const StandardType type(QStringLiteral("ToolBar"));
    return type;
}

const StandardType& window() {
    static const StandardType type(QStringLiteral("Window"));
    return type;
}

} // namespace StandardTypes

} // namespace UICoverage
} // namespace Vorsk
