// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/markdownreport.h"

#include "base/percentage.h"
#include "report/elementorder.h"
#include "report/elementtext.h"
#include "report/markdowntext.h"
#include "report/summarytext.h"
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
               controlsRow(name, totals, m_precision).join(QStringLiteral(" | ")) +
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

QString MarkdownReport::line(Coverage::NodeId node, const QString& rest) const {
    const CoverageTree& tree = m_coverage.tree();
    const CoverageTree::Node& element = tree.node(node);
    return QStringLiteral("- %1: ").arg(wordOf(tree, node)) +
           markdownMarkup(stepsBelowWindow(tree, node) + membersText(element) + waysText(element) +
                          versionText(element)) +
           rest + QLatin1Char('\n');
}

QString MarkdownReport::missedLine(Coverage::NodeId node) const {
    const CoverageTree& tree = m_coverage.tree();
    if (isUnseenView(tree, node)) {
        return QStringLiteral("- %1: ").arg(unseenWord()) +
               markdownMarkup(neverOpenedText(tree, node)) + QLatin1Char('\n');
    }
    if (!lacksEvents(tree, node)) {
        return {};
    }
    // That a control is not used says which events of it did not happen.
    return line(node, tree.isOfControls() ? QString()
                                          : listed("never", uncoveredEvents(tree.node(node))));
}

QString MarkdownReport::listed(const char* title, const QStringList& names) {
    return QStringLiteral(" (") + QLatin1String(title) + QStringLiteral(": ") +
           markdownMarkup(names.join(QStringLiteral(", "))) + QLatin1Char(')');
}

QStringList MarkdownReport::lines(Coverage::WindowId window) const {
    const CoverageTree& tree = m_coverage.tree();
    QStringList lines;
    for (const Coverage::NodeId node : elementsInOrder(tree, window)) {
        // What is below a view that was never seen is told with it.
        const QString missed =
            m_listsMissed && !isBelowUnseenView(tree, node) ? missedLine(node) : QString();
        if (!missed.isEmpty()) {
            lines.append(missed);
        }
        if (m_listsContexts && tree.counts(node) && tree.stateOf(node) == State::Used) {
            lines.append(line(node, listed("in", contextsOf(tree, node))));
        }
    }
    return lines;
}

QString MarkdownReport::toString() const {
    const CoverageTree& tree = m_coverage.tree();
    const CoverageTree::Totals all = tree.totals();
    const bool isOfControls = tree.isOfControls();
    QString text = QStringLiteral("## GUI coverage") +
                   (isOfControls ? QStringLiteral("\n\n") + controlsSummary(all, m_precision)
                                 : QStringLiteral(": ") +
                                       Base::percentText(all.used, all.elements, m_precision)) +
                   QStringLiteral("\n\n");
    for (const GateResult& gate : m_gates) {
        text += QStringLiteral("- %1 %2: %3\n")
                    .arg(gate.isMet ? QStringLiteral("met:") : QStringLiteral("**not met:**"),
                         markdownEscaped(gate.name), markdownEscaped(gate.finding));
    }
    text += m_gates.isEmpty() ? QString() : QStringLiteral("\n");
    text += (isOfControls ? QStringLiteral("| ") + controlsTitles().join(QStringLiteral(" | "))
                          : QStringLiteral("| Window | Elements | Used | Shown | Missed | Cover | "
                                           "Events")) +
            QStringLiteral(" |\n|:---|---:|---:|---:|---:|---:|---:|\n");
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
    QStringList notes = m_notes;
    if (all.unavailable > 0) {
        notes.append(unavailableNote(all));
    }
    for (const QString& note : qAsConst(notes)) {
        text += QLatin1Char('\n') + markdownEscaped(note) + QLatin1Char('\n');
    }
    return text;
}

} // namespace Uicov::Report
