// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/filesizelimit.h"

#include <csignal>

namespace Uicov::Base {

namespace {

struct sigaction actionBefore {}; // the default one, as long as nothing was changed

} // namespace

void outliveFileSizeLimit() {
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    sigaction(SIGXFSZ, &ignore, &actionBefore);
}

void restoreFileSizeLimit() {
    sigaction(SIGXFSZ, &actionBefore, nullptr);
}

} // namespace Uicov::Base
