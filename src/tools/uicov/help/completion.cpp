// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "help/completion.h"

namespace Uicov::Help {

QString completionScript(Shell shell, const Vocabulary& vocabulary) {
    switch (shell) {
    case Shell::Bash:
        return bashCompletion(vocabulary);
    case Shell::Zsh:
        return zshCompletion(vocabulary);
    case Shell::Fish:
        break;
    }
    return fishCompletion(vocabulary);
}

} // namespace Uicov::Help
