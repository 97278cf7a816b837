// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "vorskhook/recordingwriter.h"

/** Does not hear of the test functions that it is tested by. */
class QuietWriter : public VorskHost::RecordingWriter {
public:
    QuietWriter() { setTestFunction(VorskHost::TestFunction(nullptr, nullptr, nullptr)); }
};

inline bool send(VorskHost::RecordingWriter& writer, const QByteArray& payload) {
    return writer.appendMessage(7, QStringLiteral("data"), {1, payload});
}
