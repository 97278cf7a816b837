// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/hostlogger.h>

namespace VorskHost {

class RecordingWriter;

/**
 * Puts what extensions log into the recording and into the logging category "vorsk.extension".
 * Lines are UTF-8; bytes that are not, as a line cut within a character leaves them, are replaced.
 */
class RecordingLogger final : public Vorsk::HostLogger {
public:
    /** The writer is not owned and has to live as long. */
    explicit RecordingLogger(RecordingWriter& writer);

    void info(const std::string& message) override;
    void warning(const std::string& message) override;

private:
    RecordingWriter& m_writer;
};

} // namespace VorskHost
