// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/indices.h"

#include <QString>
#include <QVector>

#include <vector>

namespace Uicov::Runs {
struct RunElement;
}

namespace Uicov::Coverage {

/**
 * When what was used or seen, run by run. Times are those of a recording, so that those of two runs
 * have nothing to do with each other.
 */
class Timeline {
public:
    /** An event of an element in one context of one run. */
    struct Entry {
        RunId run = RunId::None;
        NodeId node = NodeId::None;
        QString event;
        ContextId context = ContextId::None;
        qint64 count = 0;
        /** Milliseconds from the beginning of the recording to the first and to the last time. */
        qint64 first = 0;
        qint64 last = 0;
    };

    /** @param contexts the tree's number of each of the run's contexts; None for one that does not
     *                  count */
    void add(RunId run, NodeId node, const Runs::RunElement& element,
             const QVector<ContextId>& contexts);
    /** Brings all that was added in order, and makes one entry of what the members of a group did.
     * To be called once, after the last add(). */
    void finish();

    /** Run by run, by the first time; after finish(). */
    const std::vector<Entry>& entries() const { return m_entries; }
    /** What happened at a time that was not recorded, as in data files of older versions. */
    int untimed() const { return m_untimed; }

private:
    std::vector<Entry> m_entries;
    int m_untimed = 0;
};

} // namespace Uicov::Coverage
