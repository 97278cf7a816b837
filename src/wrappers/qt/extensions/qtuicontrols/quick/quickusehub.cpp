// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickusehub.h"

namespace Vorsk {
namespace UIControls {

QuickUseHub* QuickUseHubs::hubFor(const QObject* sender) {
    // Fibonacci hashing: objects of a kind stand at regular distances.
    constexpr quint64 factor = 0x9E3779B97F4A7C15ULL;
    constexpr unsigned upperByte = 56;
    const quint64 hash = quint64{reinterpret_cast<quintptr>(sender)} * factor;
    std::unique_ptr<QuickUseHub>& hub = m_hubs.at(static_cast<std::size_t>(hash >> upperByte));
    if (hub == nullptr) {
        hub = std::make_unique<QuickUseHub>(m_uses);
    }
    return hub.get();
}

} // namespace UIControls
} // namespace Vorsk
