// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "vorskqtwrapper/recordinglogger.h"

#include <vorsk/extensionhost.h>

namespace VorskHost {

/** What init_extension() gets: the way to the logger. Never destroyed by the wrapper. */
class WrapperExtensionHost final : public Vorsk::ExtensionHost {
public:
    explicit WrapperExtensionHost(RecordingWriter& writer);

    void reserved3() override {}
    Vorsk::HostLogger* logger() override;

private:
    RecordingLogger m_logger;
};

} // namespace VorskHost
