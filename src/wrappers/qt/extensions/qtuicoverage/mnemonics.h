// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Vorsk {
namespace UICoverage {

/**
 * The text of a button or action as a user reads it: "&&" is an ampersand, any other '&' marks a
 * mnemonic and goes. A text that holds nothing else than such marks gives a null text.
 */
QString stripMnemonics(const QString& text);

} // namespace UICoverage
} // namespace Vorsk
