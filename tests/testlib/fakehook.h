// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/hook.h>

#include <QList>
#include <QString>

namespace TestLib {

/**
 * Stands in for the host's hook: keeps what is sent. While one lives it is Vorsk::Hook::hook,
 * unless it is told to be absent. Link testlib_fakes in place of the host's library.
 */
class FakeHook : public Vorsk::Hook {
public:
    struct Message {
        int channel;
        QString name;
        Vorsk::ArgumentList args;
    };

    FakeHook();
    ~FakeHook();

    /** Takes this hook away from the global pointer, or puts it back. */
    void setPresent(bool present);

    QList<Message> messages;
    int applicationId = 4711;
};

} // namespace TestLib
