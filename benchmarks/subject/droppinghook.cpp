// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Loaded ahead of the host's library, to see what the extension costs by itself: messages go
// nowhere.
#include <vorsk/hook.h>

namespace Vorsk {

Q_DECL_EXPORT bool Hook::send(int, const QString&, const ArgumentList&) {
    return true;
}

} // namespace Vorsk
