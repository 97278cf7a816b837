#include "help/completion.h"

namespace Uicov::Help {

QString Completion::script(Shell shell, const Vocabulary& vocabulary) {
    switch (shell) {
    case Shell::Bash:
        return bash(vocabulary);
    case Shell::Zsh:
        return zsh(vocabulary);
    case Shell::Fish:
        break;
    }
    return fish(vocabulary);
}

} // namespace Uicov::Help
