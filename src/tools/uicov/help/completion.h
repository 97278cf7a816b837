// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// Scripts by which shells complete what is typed behind "uicov".
namespace Uicov::Help {

class Vocabulary;

enum class Shell { Bash, Zsh, Fish };

/** The whole script for that shell, ready to be read by it. */
QString completionScript(Shell shell, const Vocabulary& vocabulary);

/** For bash 4.4 or later; needs no package of completions. */
QString bashCompletion(const Vocabulary& vocabulary);
QString zshCompletion(const Vocabulary& vocabulary);
QString fishCompletion(const Vocabulary& vocabulary);

} // namespace Uicov::Help
