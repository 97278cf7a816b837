// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recordingformat/frames.h"
#include "vorskhook/recordingfile.h"
#include "vorskhook/recordingmapping.h"
#include "vorskhook/sizelimit.h"
#include "vorskhook/testfunction.h"

#include <vorsk/argumentlist.h>
#include <vorsk/global.h>

#include <chrono>

namespace VorskHost {

/**
 * Writes one recording, from the header to the End frame. Owned by RecordingHook; used on the GUI
 * thread, from the moment the wrapper has started until the process exits.
 *
 * What cannot be written any more ends the recording: one warning, and from then on every
 * operation does nothing and returns false. The application is never disturbed.
 */
class VORSK_HOST_EXPORT RecordingWriter {
public:
    RecordingWriter() = default;
    /** Does not write the End frame: a recording that nobody closed did not end in order. */
    ~RecordingWriter() = default;
    Q_DISABLE_COPY(RecordingWriter)

    /**
     * Makes the recording at path, or beside it when path exists (see RecordingFile), and writes
     * the header and the Process frame. False with a warning when that fails.
     */
    bool open(const QString& path, const RecordingFormat::ProcessInfo& info);

    /**
     * The file does not become larger than that by what is written here; zero means without limit.
     * To be called before open(). What is given up for it, pictures first, the recording says
     * itself.
     */
    void setMaximumSize(qint64 bytes) { m_limit.setMaximum(bytes); }

    /**
     * Whether to append through memory that is shared with the file, where its file system allows
     * it and no filter of system calls is on, as is usual; else with one write(2) each. To be
     * called before open().
     */
    void setShared(bool isShared) { m_isShared = isShared; }

    /** Begins a context; an empty name ends it. */
    void mark(const QString& name);

    /**
     * Appends one message, whole or not at all, so that it outlives the process whatever happens to
     * it. In a Qt Test program a Mark frame goes before it when another test function has begun.
     * False when it is not in the recording.
     */
    bool appendMessage(int channel, const QString& name, const Vorsk::ArgumentList& args);

    /**
     * Takes one log line. It is written together with the next message, at close(), or when many
     * lines have gathered: log lines come in floods and are not worth an append each.
     */
    void appendLog(RecordingFormat::Severity severity, const QString& text);

    /** Ends the recording in order, with the End frame. Does nothing when it has ended already. */
    void close();

    bool isOpen() const { return m_file.isOpen(); }
    QString path() const { return m_file.path(); }
    /** Bytes in the recording, without log lines that still wait. */
    qint64 bytesWritten() const { return qMax(m_mapping.size(), m_file.size()); }
    /** For tests: what the End frame is going to say. */
    quint64 messagesWritten() const { return m_messages; }

    /** For tests: who is asked which test function runs. */
    void setTestFunction(const TestFunction& function);
    /** For tests: what is called in place of write(2), for each append. */
    void setWriteFunction(RecordingFile::WriteFunction function);

private:
    quint64 elapsed() const;
    const QByteArray& encoded(const QString& name);
    bool write(const QByteArray& bytes);
    void forgetWaiting();
    void noteLoss(bool isPicture);

    RecordingFile m_file;
    RecordingMapping m_mapping;
    SizeLimit m_limit;
    TestFunction m_testFunction;
    /** Frames that have still to be written, those of log lines above all. */
    QByteArray m_waiting;
    QString m_lastName;
    QByteArray m_encodedName;
    std::chrono::steady_clock::time_point m_start;
    quint64 m_messages = 0;
    bool m_isShared = true;
    bool m_refusalReported = false;
};

} // namespace VorskHost
