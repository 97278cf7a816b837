// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// Shares as people and machines read them.
namespace Uicov::Base {

/**
 * The share in percent without its sign, rounded to that many digits behind the point: 0 only for
 * none and 100 only for all, however near it comes.
 */
QString percentNumber(int part, int whole, int digits);

/** The same with "%"; "-" when there is nothing to have a share of. */
QString percentText(int part, int whole, int digits = 0);

/** Not rounded; 100 when there is nothing to have a share of. */
double exactPercent(int part, int whole);

} // namespace Uicov::Base
