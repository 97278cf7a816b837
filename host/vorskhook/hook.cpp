#include "vorskhook/recordinghook.h"

#include <vorsk/hook.h>

#include <unistd.h>

namespace Vorsk {

Hook* Hook::hook = nullptr;

bool Hook::send(int channelNumber, const QString& name, const ArgumentList& args) {
    // The stand-in makes no other kind of hook.
    auto* recording = static_cast<VorskHost::RecordingHook*>(this);
    return recording->writer().appendMessage(channelNumber, name, args);
}

int Hook::appId() const {
    return static_cast<int>(::getpid());
}

} // namespace Vorsk
