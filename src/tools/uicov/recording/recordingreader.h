// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"
#include "recording/ending.h"
#include "recording/frame.h"

#include <QFile>
#include <QString>

#include <optional>

namespace Uicov::Recording {

/**
 * Reads a recording frame by frame, each checked against its checksum; memory is bounded by the
 * largest frame that is really there, whatever lengths the file claims. Stops at the first frame
 * that is not sound: all before it can be used, and ending() tells the rest.
 */
class RecordingReader {
public:
    explicit RecordingReader(const QString& path);

    /** Opens the file and checks its header; the problem when it cannot be used at all. */
    std::optional<Base::Problem> open();

    /** The next frame of a known type; false at the end of what is sound. */
    bool next(Frame& frame);

    /** Valid once next() has returned false. */
    const Ending& ending() const { return m_ending; }

    QString path() const { return m_file.fileName(); }
    /** Of the format; 0 before open(). */
    quint32 version() const { return m_version; }

    /** True when the file begins as a recording does, of whatever version. */
    static bool looksLikeRecording(const QString& path);

private:
    enum class Read { Whole, AtEnd, Partial };

    Read read(qint64 size, QByteArray& bytes);
    bool readSharedHeader();
    bool readPayload(QByteArray& payload);
    /** Begins a frame: its length and checksum. */
    Read readFrameHeader(QByteArray& header);
    bool skipHeld();
    bool rereadFrameHeader(QByteArray& header);
    void end(Ending::Kind kind);
    void endByLastFrame();
    qint64 drain();

    QFile m_file;
    Ending m_ending;
    quint32 m_version = 0;
    /** How much was in a recording of version 2 when it was opened; 0 where nobody says. */
    qint64 m_end = 0;
    /** Room that another process took in it and perhaps did not fill. */
    qint64 m_heldPlace = 0;
    qint64 m_heldLength = 0;
    qint64 m_frameStart = 0;
    qint64 m_position = 0;
    quint64 m_messages = 0;
    /** What the End frame counted, while that is the last frame read. */
    std::optional<quint64> m_countedMessages;
    bool m_hasEnded = false;
};

} // namespace Uicov::Recording
