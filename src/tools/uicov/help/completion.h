#pragma once

#include <QString>

namespace Uicov::Help {

class Vocabulary;

/** Scripts by which shells complete what is typed behind "uicov". */
namespace Completion {

enum class Shell { Bash, Zsh, Fish };

/** The whole script for that shell, ready to be read by it. */
QString script(Shell shell, const Vocabulary& vocabulary);

/** For bash 4.4 or later; needs no package of completions. */
QString bash(const Vocabulary& vocabulary);
QString zsh(const Vocabulary& vocabulary);
QString fish(const Vocabulary& vocabulary);

} // namespace Completion

} // namespace Uicov::Help
