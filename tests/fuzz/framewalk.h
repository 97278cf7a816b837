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

private:
    std::uint8_t* m_frame;
    std::uint8_t* m_end;
    std::size_t m_size = 0;
    bool m_isFirst = true;
};

} // namespace Fuzz
