// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "uiabstraction/usagecounts.h"

#include <algorithm>

namespace Vorsk {
namespace UIAbstraction {

namespace {

constexpr std::size_t few = 16;

} // namespace

const int* UsageCounts::find(const UIEvent& event) const {
    if (m_many) {
        const auto found = m_many->constFind(event);
        return found == m_many->cend() ? nullptr : &*found;
    }
    const auto found = std::find_if(m_few.cbegin(), m_few.cend(),
                                    [&event](const auto& entry) { return entry.first == event; });
    return found == m_few.cend() ? nullptr : &found->second;
}

int& UsageCounts::operator[](const UIEvent& event) {
    if (m_many) {
        return (*m_many)[event];
    }
    const auto place = std::find_if(m_few.begin(), m_few.end(),
                                    [&event](const auto& entry) { return !(entry.first < event); });
    if (place != m_few.end() && place->first == event) {
        return place->second;
    }
    if (m_few.size() == few) {
        m_many = std::make_unique<QMap<UIEvent, int>>(toMap());
        m_few = {};
        return (*m_many)[event];
    }
    return m_few.emplace(place, event, 0)->second;
}

QMap<UIEvent, int> UsageCounts::toMap() const {
    if (m_many) {
        return *m_many;
    }
    QMap<UIEvent, int> map;
    for (const auto& [event, count] : m_few) {
        map.insert(map.cend(), event, count);
    }
    return map;
}

} // namespace UIAbstraction
} // namespace Vorsk
