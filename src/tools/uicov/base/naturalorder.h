// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Uicov::Base {

/**
 * Compares as people sort: case does not matter, and a run of digits is compared by its value, so
 * that "Page 9" comes before "page 10". The same on every machine, whatever its locale.
 * @return below zero, zero or above zero, as a stands before, with or behind b; zero only for equal
 * texts
 */
int compareNaturally(const QString& a, const QString& b);

} // namespace Uicov::Base
