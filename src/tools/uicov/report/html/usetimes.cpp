// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/usetimes.h"

#include "coverage/coveragerules.h"
#include "run/elementkinds.h"
#include "run/run.h"

namespace Uicov::Report::Html {

namespace {

qint64 earlier(qint64 a, qint64 b) {
    return a < 0 || b < 0 ? qMax(a, b) : qMin(a, b);
}

} // namespace

void UseTimes::add(const Runs::Run& run, const std::vector<Runs::KeyWalk::Place>& places,
                   const std::vector<Coverage::NodeId>& nodes) {
    std::vector<bool> counts;
    for (const QString& context : run.contexts) {
        counts.push_back(!m_isWanted || m_isWanted(context));
    }
    for (std::size_t i = 0; i < places.size(); ++i) {
        const Runs::RunElement& element = run.element(places[i].element);
        const bool isView = run.isOfControls() && Runs::isViewType(element.type);
        for (const Runs::Hit& hit : element.hits) {
            const bool isSeen =
                hit.event == Coverage::shownEvent() || hit.event == Coverage::seenEvent();
            if (isSeen != isView || !counts[static_cast<std::size_t>(hit.context)]) {
                continue;
            }
            QVector<Use>& uses = m_uses[nodes[i]];
            if (uses.isEmpty() || uses.last().run != m_runs) {
                uses.append({m_runs, hit.first, hit.last});
                continue;
            }
            uses.last().first = earlier(uses.last().first, hit.first);
            uses.last().last = qMax(uses.last().last, hit.last);
        }
    }
    ++m_runs;
}

} // namespace Uicov::Report::Html
