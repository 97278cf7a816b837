// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <csignal>

namespace Uicov::Base {

/**
 * While this lives, what asks the process to end (SIGINT, SIGTERM, SIGHUP, SIGQUIT) waits, so that
 * what was begun is finished or taken back first. Who does something long asks isRequested() on the
 * way and gives up. Lives on the stack of the only thread; such scopes nest.
 */
class DeferredEnd {
public:
    DeferredEnd();
    /** What waited is delivered here, unless an outer scope defers it too. */
    ~DeferredEnd();
    DeferredEnd(const DeferredEnd&) = delete;
    DeferredEnd& operator=(const DeferredEnd&) = delete;

    /** Lets them wait for the rest of the process, whatever becomes of this. */
    void keep() { m_isKept = true; }
    /** What the process blocked before. */
    const sigset_t& maskBefore() const { return m_before; }

    /** Whether one of the signals waits; always false where nothing defers them. */
    static bool isRequested();
    /** The signals that are deferred. */
    static sigset_t signalSet();

private:
    sigset_t m_before{};
    bool m_isKept = false;
};

} // namespace Uicov::Base
