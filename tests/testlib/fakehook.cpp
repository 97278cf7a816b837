// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/fakehook.h"

namespace TestLib {

FakeHook::FakeHook() {
    channel = 42;
    hook = this;
}

FakeHook::~FakeHook() {
    hook = nullptr;
}

void FakeHook::setPresent(bool present) {
    hook = present ? this : nullptr;
}

} // namespace TestLib

namespace Vorsk {

Hook* Hook::hook = nullptr;

bool Hook::send(int channelNumber, const QString& name, const ArgumentList& args) {
    static_cast<TestLib::FakeHook*>(this)->messages.append({channelNumber, name, args});
    return true;
}

int Hook::appId() const {
    return static_cast<const TestLib::FakeHook*>(this)->applicationId;
}

} // namespace Vorsk
