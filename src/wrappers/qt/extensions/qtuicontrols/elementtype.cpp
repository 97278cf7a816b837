// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/elementtype.h"

#include <array>

namespace Vorsk {
namespace UIControls {

namespace {

// In the order of the enumerations.
constexpr std::array<const char*, 24> types{
    "Window",   "Dialog", "Menu",     "Popup",   "Drawer",   "Page",      "Button",  "RadioButton",
    "CheckBox", "Switch", "GroupBox", "Command", "ComboBox", "TextInput", "SpinBox", "Slider",
    "Dial",     "Tab",    "List",     "Tree",    "Table",    "Option",    "Link",    "Area"};

constexpr std::array<const char*, useCount> uses{
    "activated", "changed", "checked",  "chosen",    "clicked",  "confirmed",
    "dragged",   "edited",  "expanded", "followed",  "moved",    "partiallyChecked",
    "pressed",   "seen",    "sorted",   "triggered", "unchecked"};

constexpr std::array<const char*, 16> attributes{
    "accessibleName", "description", "enabled",  "group",       "hidden", "label",
    "objectName",     "opens",       "page",     "placeholder", "qmlId",  "sensitive",
    "showing",        "toolTip",     "usedWays", "ways"};

constexpr std::array<const char*, 4> ways{"menu", "toolBar", "shortcut", "contextMenu"};

} // namespace

const char* nameOf(ElementType type) {
    return types.at(static_cast<std::size_t>(type));
}

const char* nameOf(Use use) {
    return uses.at(static_cast<std::size_t>(use));
}

const char* nameOf(Attribute attribute) {
    return attributes.at(static_cast<std::size_t>(attribute));
}

const char* nameOf(Way way) {
    return ways.at(static_cast<std::size_t>(way));
}

} // namespace UIControls
} // namespace Vorsk
