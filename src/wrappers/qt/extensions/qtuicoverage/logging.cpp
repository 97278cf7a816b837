// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "tracking/logging.h"

#include <vorsk/extensionhost.h>
#include <vorsk/hostlogger.h>

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <string>

namespace Vorsk {
namespace UICoverage {

namespace {

std::atomic<ExtensionHost*> currentHost{nullptr};

/** Longest message in bytes, without the terminating zero. */
constexpr std::size_t maximumLength = 1023;

std::string formatMessage(const char* format, va_list arguments) Q_ATTRIBUTE_FORMAT_PRINTF(1, 0);

std::string formatMessage(const char* format, va_list arguments) {
    char buffer[maximumLength + 1] = {};
    // Longer messages are cut without notice.
    (void)std::vsnprintf(buffer, sizeof buffer, format, arguments);
    return buffer;
}

/** Asked for anew with every message: the host may exchange its logger. */
HostLogger* logger() {
    ExtensionHost* const host = currentHost;
    return host == nullptr ? nullptr : host->logger();
}

} // namespace

void setExtensionHost(ExtensionHost* host) {
    currentHost = host;
}

ExtensionHost* extensionHost() {
    return currentHost;
}

void logInfo(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string message = formatMessage(format, arguments);
    va_end(arguments);
    if (HostLogger* sink = logger()) {
        sink->info(message);
    }
}

void logWarning(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string message = formatMessage(format, arguments);
    va_end(arguments);
    if (HostLogger* sink = logger()) {
        sink->warning(message);
    }
}

} // namespace UICoverage
} // namespace Vorsk
