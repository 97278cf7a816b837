// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "vorskhook/sizelimit.h"

namespace VorskHost {

void SizeLimit::setMaximum(qint64 bytes) {
    *this = SizeLimit();
    m_maximum = bytes;
}

bool SizeLimit::hasRoom(qint64 size, qint64 bytes) const {
    return m_maximum == 0 || (m_others == 0 && size + bytes <= m_maximum - reserve);
}

bool SizeLimit::admits(qint64 size, qint64 bytes, bool isPicture) {
    const bool isTooMuch = isPicture && m_maximum != 0 && size + bytes > m_maximum / 2;
    if (!isTooMuch && hasRoom(size, bytes)) {
        return true;
    }
    ++(isPicture ? m_pictures : m_others);
    return false;
}

} // namespace VorskHost
