// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

namespace Vorsk {
namespace UIControls {

/** What an element of this extension is: a view, which has to be brought up, or a control, which
 * can be operated. */
enum class ElementType : quint8 {
    // Views
    Window,
    Dialog,
    Menu,
    Popup,
    Drawer,
    Page,
    // Controls
    Button,
    RadioButton,
    CheckBox,
    Switch,
    GroupBox,
    Command,
    ComboBox,
    TextInput,
    SpinBox,
    Slider,
    Dial,
    Tab,
    List,
    Tree,
    Table,
    Option,
    Link,
    Area
};
constexpr int typeCount = static_cast<int>(ElementType::Area) + 1;

constexpr bool isView(ElementType type) {
    return type <= ElementType::Page;
}

/** The type's name in the stream: its standard type. A literal. */
const char* nameOf(ElementType type);

/** What can happen to an element; each is an event of the stream. */
enum class Use : quint8 {
    Activated,
    Changed,
    Checked,
    Chosen,
    Clicked,
    Confirmed,
    Dragged,
    Edited,
    Expanded,
    Followed,
    Moved,
    PartiallyChecked,
    Pressed,
    Seen,
    Sorted,
    Triggered,
    Unchecked
};
constexpr int useCount = static_cast<int>(Use::Unchecked) + 1;

/** The event's name in the stream. A literal. */
const char* nameOf(Use use);

/** A set of uses, as the events that an element announces. */
class Uses {
public:
    constexpr Uses() = default;
    constexpr Uses(std::initializer_list<Use> uses) {
        for (const Use use : uses) {
            add(use);
        }
    }
    constexpr void add(Use use) { m_bits |= bit(use); }
    constexpr bool contains(Use use) const { return (m_bits & bit(use)) != 0; }
    constexpr bool isEmpty() const { return m_bits == 0; }

private:
    static constexpr quint32 bit(Use use) { return quint32{1} << static_cast<unsigned>(use); }

    quint32 m_bits = 0;
};

/** What else is known of an element; each is an attribute of the stream. docs/controls.md says what
 * the values mean. */
enum class Attribute : quint8 {
    AccessibleName,
    Description,
    Enabled,
    Group,
    Hidden,
    Label,
    ObjectName,
    Opens,
    Page,
    Placeholder,
    QmlId,
    Sensitive,
    Showing,
    ToolTip,
    UsedWays,
    Ways
};
constexpr int attributeCount = static_cast<int>(Attribute::Ways) + 1;

/** The attribute's name in the stream. A literal. */
const char* nameOf(Attribute attribute);

/** The ways in which a command can be reached. */
enum class Way : quint8 { Menu, ToolBar, Shortcut, ContextMenu };
constexpr int wayCount = static_cast<int>(Way::ContextMenu) + 1;

/** The way's name in the attributes Ways and UsedWays. A literal. */
const char* nameOf(Way way);

} // namespace UIControls
} // namespace Vorsk
