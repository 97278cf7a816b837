// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/timeline.h"

#include "run/runelement.h"

#include <algorithm>
#include <tuple>

namespace Uicov::Coverage {

namespace {

auto identityOf(const Timeline::Entry& entry) {
    return std::tie(entry.run, entry.node, entry.event, entry.context);
}

} // namespace

void Timeline::add(RunId run, NodeId node, const Runs::RunElement& element,
                   const QVector<ContextId>& contexts) {
    for (const Runs::Hit& hit : element.hits) {
        const ContextId context = contexts.at(hit.context);
        if (context == ContextId::None || !element.events.contains(hit.event)) {
            continue;
        }
        if (hit.first < 0 || hit.last < 0) {
            ++m_untimed;
        } else {
            m_entries.push_back({run, node, hit.event, context, hit.count, hit.first, hit.last});
        }
    }
}

void Timeline::finish() {
    std::sort(m_entries.begin(), m_entries.end(),
              [](const Entry& a, const Entry& b) { return identityOf(a) < identityOf(b); });
    std::vector<Entry> merged;
    for (const Entry& entry : m_entries) {
        if (merged.empty() || identityOf(merged.back()) != identityOf(entry)) {
            merged.push_back(entry);
            continue;
        }
        Entry& same = merged.back();
        same.count += entry.count;
        same.first = std::min(same.first, entry.first);
        same.last = std::max(same.last, entry.last);
    }
    std::stable_sort(merged.begin(), merged.end(), [](const Entry& a, const Entry& b) {
        return std::tie(a.run, a.first) < std::tie(b.run, b.first);
    });
    m_entries = std::move(merged);
}

} // namespace Uicov::Coverage
