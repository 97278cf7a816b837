// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskhook/recordinghook.h"

#include <vorsk/hook.h>

namespace Vorsk {

// The stand-in makes no other kind of hook than its own.

Hook* Hook::hook = nullptr;

bool Hook::send(int channelNumber, const QString& name, const ArgumentList& args) {
    auto* recording = static_cast<VorskHost::RecordingHook*>(this);
    return recording->writer().appendMessage(channelNumber, name, args);
}

int Hook::appId() const {
    return static_cast<const VorskHost::RecordingHook*>(this)->processId();
}

} // namespace Vorsk
