// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/timelinejson.h"

#include "coverage/coverageresult.h"

#include <QJsonObject>

namespace Uicov::Report {

using Coverage::CoverageResult;
using Coverage::CoverageTree;
using Coverage::Timeline;

QJsonArray timelineJson(const CoverageResult& coverage) {
    const CoverageTree& tree = coverage.tree();
    QJsonArray array;
    for (const Timeline::Entry& entry : coverage.timeline().entries()) {
        if (tree.isReported(entry.node)) {
            array.append(QJsonObject{
                {QStringLiteral("run"), coverage.run(entry.run).uuid},
                {QStringLiteral("application"), tree.node(tree.windowOf(entry.node)).application},
                {QStringLiteral("key"), tree.keyOf(entry.node).toKey()},
                {QStringLiteral("event"), entry.event},
                {QStringLiteral("context"), tree.contextName(entry.context)},
                {QStringLiteral("count"), entry.count},
                {QStringLiteral("first_ms"), entry.first},
                {QStringLiteral("last_ms"), entry.last}});
        }
    }
    return array;
}

} // namespace Uicov::Report
