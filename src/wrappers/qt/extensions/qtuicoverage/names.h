// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "uiabstraction/standardtype.h"
#include "uiabstraction/uievent.h"

namespace Vorsk {
namespace UICoverage {

/** The events that this extension announces; each is built on first use and kept. */
namespace Events {
const UIAbstraction::UIEvent& checked();
const UIAbstraction::UIEvent& clicked();
const UIAbstraction::UIEvent& confirmed();
const UIAbstraction::UIEvent& partiallyChecked();
const UIAbstraction::UIEvent& shown();
const UIAbstraction::UIEvent& textChanged();
const UIAbstraction::UIEvent& textEdited();
const UIAbstraction::UIEvent& triggered();
const UIAbstraction::UIEvent& unchecked();
} // namespace Events

/** The kinds of control that this extension tells apart; each is built on first use and kept. */
namespace StandardTypes {
const UIAbstraction::StandardType& button();
const UIAbstraction::StandardType& checkBox();
const UIAbstraction::StandardType& dialog();
const UIAbstraction::StandardType& menu();
const UIAbstraction::StandardType& menuBar();
const UIAbstraction::StandardType& menuItem();
const UIAbstraction::StandardType& table();
const UIAbstraction::StandardType& textInput();
const UIAbstraction::StandardType& toolBar();
const UIAbstraction::StandardType& window();
} // namespace StandardTypes

} // namespace UICoverage
} // namespace Vorsk
