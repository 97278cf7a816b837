// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/global.h>

#include <string>

namespace Vorsk {

/**
 * Where an extension's messages for the tester go. Owned by the host.
 *
 * Slots: the destructor takes the first two, info() is the third, warning() the fourth.
 */
class HostLogger {
public:
    virtual ~HostLogger() = default;

    virtual void info(const std::string& message) = 0;
    virtual void warning(const std::string& message) = 0;

protected:
    HostLogger() = default;
    Q_DISABLE_COPY(HostLogger)
};

} // namespace Vorsk
