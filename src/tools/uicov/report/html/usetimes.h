// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/indices.h"
#include "run/keywalk.h"

#include <QHash>
#include <QVector>

#include <functional>
#include <vector>

namespace Uicov::Runs {
struct Run;
}

namespace Uicov::Report::Html {

/** In which runs each node was used, and when: runs are added in their order. */
class UseTimes {
public:
    /** Milliseconds since the recording began; -1 where nobody told. */
    struct Use {
        int run = 0;
        qint64 first = -1;
        qint64 last = -1;
    };

    /** Only what happens in contexts of which it is true counts; none means all. */
    void setContexts(const std::function<bool(const QString&)>& isWanted) { m_isWanted = isWanted; }

    /** @param nodes the tree's node of each place */
    void add(const Runs::Run& run, const std::vector<Runs::KeyWalk::Place>& places,
             const std::vector<Coverage::NodeId>& nodes);

    /** In the order of the runs, each at most once; of views it is when they were seen. */
    QVector<Use> uses(Coverage::NodeId node) const { return m_uses.value(node); }

private:
    std::function<bool(const QString&)> m_isWanted;
    QHash<Coverage::NodeId, QVector<Use>> m_uses;
    int m_runs = 0;
};

} // namespace Uicov::Report::Html
