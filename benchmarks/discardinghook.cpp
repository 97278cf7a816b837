// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "discardinghook.h"

DiscardingHook::DiscardingHook() {
    hook = this;
}

DiscardingHook::~DiscardingHook() {
    hook = nullptr;
}

namespace Vorsk {

Hook* Hook::hook = nullptr;

bool Hook::send(int, const QString&, const ArgumentList&) {
    ++static_cast<DiscardingHook*>(this)->messages;
    return true;
}

int Hook::appId() const {
    return 1;
}

} // namespace Vorsk
