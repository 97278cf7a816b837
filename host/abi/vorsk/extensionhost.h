// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/global.h>

namespace Vorsk {

class HostLogger;

/**
 * What the host hands to init_extension(). Owned by the host; lives as long as the process may log.
 *
 * Slots: the destructor takes the first two, logger() is the fourth; the third is the host's own.
 */
class ExtensionHost {
public:
    virtual ~ExtensionHost() = default;

    virtual void reserved3() = 0;

    /** The logger to use for one message; ask anew for every message, it may change. */
    virtual HostLogger* logger() = 0;

protected:
    ExtensionHost() = default;
    Q_DISABLE_COPY(ExtensionHost)
};

} // namespace Vorsk
