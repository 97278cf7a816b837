// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/global.h>

#include <QtGlobal>

namespace VorskHost {

/**
 * Decides what a recording of limited size keeps: pictures while it is no more than half full,
 * other messages while there is room, and after the first of those that has none nothing more,
 * since what follows may build on it. Counts what it turns away. Owned by RecordingWriter.
 */
class VORSK_HOST_EXPORT SizeLimit {
public:
    /** The smallest limit that leaves room for something worth reading. */
    static constexpr qint64 smallest = 64LL * 1024;
    /** Bytes that stay free for what ends a recording. */
    static constexpr qint64 reserve = 256;

    /** Zero, as at first, means without limit. */
    void setMaximum(qint64 bytes);
    qint64 maximum() const { return m_maximum; }
    bool isSet() const { return m_maximum > 0; }

    /** True when a message of that many bytes belongs into a recording of that size. */
    bool admits(qint64 size, qint64 bytes, bool isPicture);
    /** True when there is room for something that is no message; nothing is counted. */
    bool hasRoom(qint64 size, qint64 bytes) const;

    quint64 pictures() const { return m_pictures; }
    quint64 others() const { return m_others; }

private:
    qint64 m_maximum = 0;
    quint64 m_pictures = 0;
    quint64 m_others = 0;
};

} // namespace VorskHost
