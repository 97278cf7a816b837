// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/global.h>

#include <sys/types.h>

namespace VorskHost {

/**
 * Tells the process that claimed something from a child that fork() made of it, without a system
 * call where the system can wipe memory at a fork. A child that shares all memory with its parent,
 * as vfork() makes one, counts as its parent. Used on one thread.
 */
class VORSK_HOST_EXPORT OwningProcess {
public:
    OwningProcess() = default;
    ~OwningProcess();
    Q_DISABLE_COPY(OwningProcess)

    /** From now on this process is the owner. */
    void claim();

    /** False before claim() and in every other process. */
    bool isThis() const;

    /** The number of this process, which becomes the owner if it is not. */
    pid_t idOfThis();

private:
    pid_t m_owner = 0;
    /** One page that reads as zero in a forked child; null where there is no such memory. */
    volatile char* m_page = nullptr;
};

} // namespace VorskHost
