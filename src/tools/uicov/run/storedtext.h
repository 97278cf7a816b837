#pragma once

#include <QString>

namespace Uicov::Runs {

/** Texts as every form of a run can hold them. */
namespace StoredText {

/**
 * The text with U+FFFD for each half of a surrogate pair that stands alone: an application may
 * have such a text, but UTF-8, and so a data file, cannot. A null text stays null.
 */
QString of(const QString& text);

} // namespace StoredText

} // namespace Uicov::Runs
