// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// Texts as every form of a run can hold them.
namespace Uicov::Runs {

/**
 * The text with U+FFFD for each half of a surrogate pair that stands alone: an application may
 * have such a text, but UTF-8, and so a data file, cannot. A null text stays null.
 */
QString storedText(const QString& text);

} // namespace Uicov::Runs
