// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recordingformat/recordingformat.h"

#include <QByteArray>

namespace Uicov::Recording {

/** One sound frame of a recording; framedecoder.h reads its body. */
struct Frame {
    RecordingFormat::FrameType type = RecordingFormat::FrameType::End;
    /** Microseconds since the recording was opened. */
    quint64 time = 0;
    QByteArray body;
};

} // namespace Uicov::Recording
