// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/gatekeeper.h"

#include "base/percentage.h"
#include "coverage/coverageresult.h"

#include <algorithm>

namespace Uicov::Coverage {

namespace {

/** Room for what a product of doubles lacks; far below what anybody can ask for. */
constexpr double tolerance = 1e-9;

bool isAtLeast(const CoverageTree::Totals& totals, double percent) {
    return Base::exactPercent(totals.used, totals.elements) + tolerance >= percent;
}

QString usedOf(const CoverageTree::Totals& totals, int digits) {
    return (totals.views > 0 ? QStringLiteral("%1 of %2 controls are used, %3")
                             : QStringLiteral("%1 of %2 elements are used, %3"))
        .arg(totals.used)
        .arg(totals.elements)
        .arg(Base::percentText(totals.used, totals.elements, digits));
}

void judgeWindows(const CoverageResult& coverage, const Pattern& pattern, double percent,
                  int digits, QVector<GateResult>& results) {
    const QString name =
        QStringLiteral("fail-under-window ") + pattern.glob() + QStringLiteral("=%1").arg(percent);
    const CoverageTree& tree = coverage.tree();
    bool isFound = false;
    const QList<WindowId> windows = tree.windows();
    for (const WindowId window : windows) {
        const CoverageTree::Totals totals = tree.totalsOf(window);
        if (totals.elements > 0 && CoverageResult::matchesWindow(pattern, tree.node(window).step)) {
            isFound = true;
            results.append(
                {name,
                 tree.node(window).step.toString() + QStringLiteral(": ") + usedOf(totals, digits),
                 isAtLeast(totals, percent), window});
        }
    }
    if (!isFound) {
        results.append({name, QStringLiteral("no such window was opened"), false, WindowId()});
    }
}

} // namespace

QVector<GateResult> judgeGates(const CoverageResult& coverage, const Gates& gates, int digits) {
    QVector<GateResult> results;
    const CoverageTree& tree = coverage.tree();
    if (gates.failUnder) {
        const CoverageTree::Totals totals = tree.totals();
        results.append({QStringLiteral("fail-under %1").arg(*gates.failUnder),
                        usedOf(totals, digits), isAtLeast(totals, *gates.failUnder), WindowId()});
    }
    for (const auto& gate : gates.failUnderWindows) {
        judgeWindows(coverage, gate.first, gate.second, digits, results);
    }
    const QList<WindowId> windows = tree.windows();
    for (const Pattern& pattern : gates.requiredWindows) {
        const auto it = std::find_if(windows.cbegin(), windows.cend(), [&](WindowId window) {
            const CoverageTree::Node& node = tree.node(window);
            return CoverageResult::matchesWindow(pattern, node.step) &&
                   (node.role != CoverageTree::Node::Role::View || node.wasSeen);
        });
        const bool isOpened = it != windows.cend();
        results.append({QStringLiteral("require-window ") + pattern.glob(),
                        isOpened ? tree.node(*it).step.toString() + QStringLiteral(" was opened")
                                 : QStringLiteral("no such window was opened"),
                        isOpened, isOpened ? *it : WindowId()});
    }
    return results;
}

} // namespace Uicov::Coverage
