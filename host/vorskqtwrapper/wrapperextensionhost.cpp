// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskqtwrapper/wrapperextensionhost.h"

namespace VorskHost {

WrapperExtensionHost::WrapperExtensionHost(RecordingWriter& writer)
    : m_logger(writer) {}

Vorsk::HostLogger* WrapperExtensionHost::logger() {
    return &m_logger;
}

} // namespace VorskHost
