// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/elementtype.h"

#include <array>

namespace Vorsk {
namespace UIControls {

namespace {

// In the order of the enumerations.
constexpr std::array<const char*, typeCount> types{
    "Window",   "Dialog", "Menu",     "Popup",   "Drawer",   "Page",      "Button",  "RadioButton",
    "CheckBox", "Switch", "GroupBox", "Command", "ComboBox", "TextInput", "SpinBox", "Slider",
    "Dial",     "Tab",    "List",     "Tree",    "Table",    "Option",    "Link",    "Area"};

constexpr std::array<const char*, useCount> uses{
    "activated", "changed", "checked",  "chosen",    "clicked",  "confirmed",
    "dragged",   "edited",  "expanded", "followed",  "moved",    "partiallyChecked",
    "pressed",   "seen",    "sorted",   "triggered", "unchecked"};

constexpr std::array<const char*, attributeCount> attributes{
    "accessibleName", "description", "enabled",  "group",       "hidden", "label",
    "objectName",     "opens",       "page",     "placeholder", "qmlId",  "sensitive",
    "showing",        "toolTip",     "usedWays", "ways"};

constexpr std::array<const char*, wayCount> ways{"menu", "toolBar", "shortcut", "contextMenu"};

// What is left out of a list is null at its end.
static_assert(types.back() != nullptr, "a type has no name");
static_assert(uses.back() != nullptr, "a use has no name");
static_assert(attributes.back() != nullptr, "an attribute has no name");
static_assert(ways.back() != nullptr, "a way has no name");

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
