#pragma once

#include <QString>

namespace Uicov::Base {

/** Shares as people and machines read them. */
namespace Percentage {

/**
 * The share in percent without its sign, rounded to that many digits behind the point: 0 only for
 * none and 100 only for all, however near it comes.
 */
QString number(int part, int whole, int digits);

/** The same with "%"; "-" when there is nothing to have a share of. */
QString text(int part, int whole, int digits = 0);

/** Not rounded; 100 when there is nothing to have a share of. */
double exact(int part, int whole);

} // namespace Percentage

} // namespace Uicov::Base
