// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

namespace Fuzz {

/**
 * Goes through the frames of a recording by their lengths alone. What a checksum protects from
 * damage it would also protect from ever being tried out; so this is how fuzzing gets behind it.
 */
class FrameWalk {
public:
    FrameWalk(std::uint8_t* data, std::size_t size);

    /** Steps to the next frame that is wholly there; false when there is none. */
    bool next();

    /** Of the frame stepped to: type, time and body. */
    std::uint8_t* payload() const;
    std::size_t payloadSize() const { return m_size; }

    /** Makes the frame's checksum fit its payload. */
    void repairChecksum();

    /** Whether the recording says itself how much is in it, because it may be longer. */
    bool isShared() const { return m_isShared; }
    /** Makes it say that it goes up to the frame stepped to, that frame not with it. */
    void endHere();

private:
    bool m_isShared;
    std::uint8_t* m_data;
    std::uint8_t* m_frame;
    std::uint8_t* m_end;
    std::size_t m_size = 0;
    bool m_isFirst = true;
};

} // namespace Fuzz
