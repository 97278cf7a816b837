// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/windoworder.h"

#include "base/naturalorder.h"
#include "base/percentage.h"
#include "report/elementtext.h"

#include <algorithm>

namespace Uicov::Report {

using Coverage::CoverageTree;

namespace {

/** Less comes first. */
double rank(const CoverageTree::Totals& totals, const QString& order) {
    if (order == QLatin1String("elements")) {
        return -totals.elements;
    }
    if (order == QLatin1String("missed")) {
        return -(totals.elements - totals.used);
    }
    if (order == QLatin1String("cover")) {
        return Base::exactPercent(totals.used, totals.elements);
    }
    return 0;
}

} // namespace

QList<Coverage::WindowId> sortedWindows(const CoverageTree& tree, const QString& order) {
    const bool isReversed = order.startsWith(QLatin1Char('-'));
    // What needs attention first comes first where there are controls, unless something else is
    // asked for.
    const QString key = isReversed                               ? order.mid(1)
                        : order.isEmpty() && tree.isOfControls() ? QStringLiteral("cover")
                                                                 : order;
    struct Row {
        Coverage::WindowId window;
        double rank;
    };
    QMap<QString, std::vector<Row>> applications;
    const QList<Coverage::WindowId> windows = tree.windows(); // by application and name
    for (const Coverage::WindowId window : windows) {
        const CoverageTree::Totals totals = tree.totalsOf(window);
        if (totals.elements > 0 || totals.views > 0) {
            applications[tree.node(window).application].push_back({window, rank(totals, key)});
        }
    }
    QList<Coverage::WindowId> sorted;
    for (std::vector<Row>& rows : applications) {
        if (tree.isOfControls()) {
            std::stable_sort(rows.begin(), rows.end(), [&](const Row& a, const Row& b) {
                return Base::compareNaturally(displayedStep(tree.node(a.window).step),
                                              displayedStep(tree.node(b.window).step)) < 0;
            });
        }
        if (isReversed) {
            std::reverse(rows.begin(), rows.end());
        }
        std::stable_sort(rows.begin(), rows.end(), [&](const Row& a, const Row& b) {
            return isReversed ? b.rank < a.rank : a.rank < b.rank;
        });
        for (const Row& row : rows) {
            sorted.append(row.window);
        }
    }
    return sorted;
}

} // namespace Uicov::Report
