// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "vorskhook/owningprocess.h"
#include "vorskhook/recordingwriter.h"

#include <vorsk/hook.h>

namespace VorskHost {

/**
 * The stand-in's hook: what is sent goes into a recording. The wrapper makes the one object when
 * it starts and never destroys it, because extensions send until the process is gone.
 */
class VORSK_HOST_EXPORT RecordingHook final : public Vorsk::Hook {
public:
    /**
     * Opens the recording, of no more than that many bytes unless they are 0, and puts the hook
     * where extensions find it (Vorsk::Hook::hook). Null when the recording cannot be made. A
     * second call gives the hook of the first.
     * @param isShared see RecordingWriter::setShared()
     */
    static RecordingHook* start(const QString& path, const RecordingFormat::ProcessInfo& info,
                                qint64 maximumSize = 0, bool isShared = true);

    /** The hook that start() made; null before. */
    static RecordingHook* instance();

    RecordingWriter& writer() { return m_writer; }
    /** Asked for with each message, of which a system call would be a good part. */
    int processId() const { return static_cast<int>(m_process.idOfThis()); }

private:
    RecordingHook();
    ~RecordingHook() = default;
    Q_DISABLE_COPY(RecordingHook)

    RecordingWriter m_writer;
    mutable OwningProcess m_process;
};

} // namespace VorskHost
