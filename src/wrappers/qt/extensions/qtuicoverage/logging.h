// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

namespace Vorsk {

class ExtensionHost;

namespace UICoverage {

/** Every message goes to this host's logger from now on; null drops them. The host is not owned. */
void setExtensionHost(ExtensionHost* host);
ExtensionHost* extensionHost();

// printf-style messages to the tester, cut at 1023 bytes. GUI thread only.
void logInfo(const char* format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);
void logWarning(const char* format, ...) Q_ATTRIBUTE_FORMAT_PRINTF(1, 2);

} // namespace UICoverage
} // namespace Vorsk
