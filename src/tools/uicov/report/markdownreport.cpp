// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/markdownreport.h"

#include "base/percentage.h"
#include "report/elementtext.h"
#include "report/markdowntext.h"
#include "report/windoworder.h"

#include <algorithm>

namespace Uicov::Report {

using Coverage::CoverageResult;
using Coverage::CoverageTree;
using Coverage::GateResult;
using Coverage::State;

MarkdownReport::MarkdownReport(const CoverageResult& coverage)
    : m_coverage(coverage) {}

QString MarkdownReport::row(const QString& name, const CoverageTree::Totals& totals) const {
    if (m_coverage.tree().isOfControls()) {
        return QStringLiteral("| ") +
               QStringList{name,
                           QStringLiteral("%1/%2").arg(totals.seenViews).arg(totals.views),
                           QString::number(totals.elements),
                           QString::number(totals.used),
                           QString::number(totals.shown),
                           QString::number(totals.missed),
                           Base::percentText(totals.used, totals.elements, m_precision)}
                   .join(QStringLiteral(" | ")) +
               QStringLiteral(" |\n");
    }
    return QStringLiteral("| ") +
           QStringList{name,
                       QString::number(totals.elements),
                       QString::number(totals.used),
                       QString::number(totals.shown),
                       QString::number(totals.missed),
                       Base::percentText(totals.used, totals.elements, m_precision),
                       QStringLiteral("%1/%2").arg(totals.coveredEvents).arg(totals.events)}
               .join(QStringLiteral(" | ")) +
           QStringLiteral(" |\n");
}

QString MarkdownReport::line(Coverage::NodeId node, const char* title,
                             const QStringList& names) const {
    const CoverageTree& tree = m_coverage.tree();
    if (tree.isOfControls() && QLatin1String(title) == QLatin1String("never")) {
        return QStringLiteral("- %1: ").arg(wordOf(tree, node)) +
               markdownMarkup(stepsBelowWindow(tree, node) + membersText(tree.node(node))) +
               QLatin1Char('\n');
    }
    return QStringLiteral("- %1: ").arg(wordOf(tree, node)) +
           markdownMarkup(stepsBelowWindow(tree, node)) + QStringLiteral(" (") +
           QLatin1String(title) + QStringLiteral(": ") +
           markdownMarkup(names.join(QStringLiteral(", "))) + QStringLiteral(")\n");
}

QStringList MarkdownReport::lines(Coverage::WindowId window) const {
    const CoverageTree& tree = m_coverage.tree();
    QStringList lines;
    for (const Coverage::NodeId node : tree.nodesOf(window)) {
        const bool isUnseenView =
            tree.node(node).role == CoverageTree::Node::Role::View && !tree.node(node).wasSeen;
        if (m_listsMissed && isBelowUnseenView(tree, node)) {
            continue;
        }
        if (m_listsMissed && isUnseenView) {
            lines.append(QStringLiteral("- unseen: ") +
                         markdownMarkup(neverOpenedText(tree, node)) + QLatin1Char('\n'));
        }
        if (m_listsMissed && lacksEvents(tree, node)) {
            lines.append(line(node, "never", uncoveredEvents(tree.node(node))));
        }
        if (m_listsContexts && tree.counts(node) && tree.stateOf(node) == State::Used) {
            lines.append(line(node, "in", contextsOf(tree, node)));
        }
    }
    return lines;
}

QString MarkdownReport::toString() const {
    const CoverageTree& tree = m_coverage.tree();
    const CoverageTree::Totals all = tree.totals();
    QString text = QStringLiteral("## GUI coverage: %1\n\n")
                       .arg(Base::percentText(all.used, all.elements, m_precision));
    for (const GateResult& gate : m_gates) {
        text += QStringLiteral("- %1 %2: %3\n")
                    .arg(gate.isMet ? QStringLiteral("met:") : QStringLiteral("**not met:**"),
                         markdownEscaped(gate.name), markdownEscaped(gate.finding));
    }
    text += m_gates.isEmpty() ? QString() : QStringLiteral("\n");
    text += tree.isOfControls()
                ? QStringLiteral("| Window | Views | Controls | Used | Seen | Missed | Cover |\n"
                                 "|:---|---:|---:|---:|---:|---:|---:|\n")
                : QStringLiteral("| Window | Elements | Used | Shown | Missed | Cover | Events |\n"
                                 "|:---|---:|---:|---:|---:|---:|---:|\n");
    QString missed;
    const QList<Coverage::WindowId> windows = sortedWindows(tree, m_order);
    const bool isOneOfSeveral =
        std::any_of(windows.cbegin(), windows.cend(), [&](Coverage::WindowId window) {
            return tree.node(window).application != tree.node(windows.first()).application;
        });
    for (const Coverage::WindowId window : windows) {
        const CoverageTree::Totals totals = tree.totalsOf(window);
        if (m_skipsCovered && totals.used == totals.elements && totals.seenViews == totals.views) {
            continue;
        }
        const QString name =
            (isOneOfSeveral ? markdownEscaped(tree.node(window).application) + QStringLiteral(": ")
                            : QString()) +
            markdownMarkup(displayedStep(tree.node(window).step));
        text += row(name, totals);
        const QStringList below = lines(window);
        if (!below.isEmpty()) {
            missed +=
                QStringLiteral("\n### ") + name + QStringLiteral("\n\n") + below.join(QString());
        }
    }
    text += row(QStringLiteral("**TOTAL**"), all) + missed;
    for (const QString& note : m_notes) {
        text += QLatin1Char('\n') + markdownEscaped(note) + QLatin1Char('\n');
    }
    return text;
}

} // namespace Uicov::Report
