// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickcontainers.h"

#include "qtuicontrols/quick/signalhub.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Vorsk {
namespace UIControls {

bool QuickContainers::isKnown(const QQuickItem* item) const {
    const auto known = m_containers.constFind(item);
    return known != m_containers.cend() && !known->item.isNull();
}

void QuickContainers::remember(QQuickItem* item) {
    Container& known = m_containers[item];
    if (!known.item.isNull()) {
        return;
    }
    known.item = item;
    known.hasChanged = false;
    if (m_containers.size() > m_sizeToClean) {
        removeDead();
    }
    m_hubs.connectChildrenChanged(item);
}

void QuickContainers::noteChange(const QQuickItem* item) {
    const auto known = m_containers.find(item);
    if (known != m_containers.end() && !known->hasChanged) {
        known->hasChanged = true;
        m_changed.push_back(item);
    }
}

std::vector<QPointer<QQuickItem>> QuickContainers::takeChanged() {
    std::vector<QPointer<QQuickItem>> living;
    for (const QQuickItem* item : std::exchange(m_changed, {})) {
        const auto known = m_containers.find(item);
        if (known != m_containers.end() && !known->item.isNull() && known->hasChanged) {
            known->hasChanged = false;
            living.push_back(known->item);
        }
    }
    return living;
}

void QuickContainers::removeDead() {
    for (auto it = m_containers.begin(); it != m_containers.end();) {
        it = it->item.isNull() ? m_containers.erase(it) : std::next(it);
    }
    m_sizeToClean = std::max(1024, 2 * m_containers.size());
}

} // namespace UIControls
} // namespace Vorsk
