// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRegularExpression>

namespace Vorsk {
namespace UIControls {

/** Matches whole names as the pattern does, in which * stands for any characters and ? for one. */
QRegularExpression fromWildcard(const QString& pattern);

} // namespace UIControls
} // namespace Vorsk
