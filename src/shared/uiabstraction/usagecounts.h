// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "uiabstraction/uievent.h"

#include <QMap>

#include <memory>
#include <utility>
#include <vector>

namespace Vorsk {
namespace UIAbstraction {

/**
 * How often each event happened to one element. Nearly all elements have no more than four events,
 * which a map would spread over as many pieces of memory and one more; so they lie side by side
 * here, in the order of their names. What a foreign stream has in larger numbers goes into a map,
 * and costs no more there than in any.
 */
class UsageCounts {
public:
    /** Null when the event is not known; good until the next event becomes known. */
    const int* find(const UIEvent& event) const;

    /** The count of the event, which becomes known with 0 when it was not; good as long. */
    int& operator[](const UIEvent& event);

    /** A copy. */
    QMap<UIEvent, int> toMap() const;

private:
    std::vector<std::pair<UIEvent, int>> m_few;
    /** Has all of them once they are many; null before. */
    std::unique_ptr<QMap<UIEvent, int>> m_many;
};

} // namespace UIAbstraction
} // namespace Vorsk
