// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskqtwrapper/recordinglogger.h"

#include "vorskhook/hostlogging.h"
#include "vorskhook/recordingwriter.h"

namespace VorskHost {

RecordingLogger::RecordingLogger(RecordingWriter& writer)
    : m_writer(writer) {}

void RecordingLogger::info(const std::string& message) {
    const QString text = QString::fromStdString(message);
    m_writer.appendLog(RecordingFormat::Severity::Info, text);
    qCInfo(extensionLog).noquote() << text;
}

void RecordingLogger::warning(const std::string& message) {
    const QString text = QString::fromStdString(message);
    m_writer.appendLog(RecordingFormat::Severity::Warning, text);
    qCWarning(extensionLog).noquote() << text;
}

} // namespace VorskHost
