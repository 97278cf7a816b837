// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "framewalk.h"

#include "recordingformat/recordingformat.h"

#include <QtEndian>

#include <algorithm>

#include <zlib.h>

namespace Fuzz {

using RecordingFormat::frameHeaderSize;

namespace {

bool isShared(const std::uint8_t* data, std::size_t size) {
    return size >= RecordingFormat::sharedHeaderSize &&
           qFromBigEndian<quint32>(data + sizeof RecordingFormat::magic) ==
               RecordingFormat::sharedVersion;
}

} // namespace

FrameWalk::FrameWalk(std::uint8_t* data, std::size_t size)
    : m_isShared(Fuzz::isShared(data, size))
    , m_data(data)
    , m_frame(data + (m_isShared ? RecordingFormat::sharedHeaderSize
                                 : std::min<std::size_t>(size, RecordingFormat::headerSize)))
    , m_end(data + size) {}

bool FrameWalk::next() {
    if (!m_isFirst) {
        m_frame += frameHeaderSize + m_size;
    }
    m_isFirst = false;
    if (m_end - m_frame < frameHeaderSize) {
        m_frame = m_end;
        m_size = 0;
        m_isFirst = true; // stays at the end
        return false;
    }
    const auto length = qFromBigEndian<quint32>(m_frame);
    if (length > static_cast<std::size_t>(m_end - m_frame - frameHeaderSize)) {
        m_frame = m_end;
        m_size = 0;
        m_isFirst = true;
        return false;
    }
    m_size = length;
    return true;
}

std::uint8_t* FrameWalk::payload() const {
    return m_frame + frameHeaderSize;
}

void FrameWalk::repairChecksum() {
    const uLong checksum = crc32(0, payload(), static_cast<uInt>(m_size));
    qToBigEndian(static_cast<quint32>(checksum), m_frame + sizeof(quint32));
}

void FrameWalk::endHere() {
    if (m_isShared) {
        qToBigEndian(static_cast<quint64>(m_frame - m_data), m_data + RecordingFormat::endOffset);
    }
}

} // namespace Fuzz
