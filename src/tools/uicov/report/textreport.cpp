// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/textreport.h"

#include "base/displaytext.h"
#include "base/naturalorder.h"
#include "base/percentage.h"
#include "report/elementorder.h"
#include "report/elementtext.h"
#include "report/summarytext.h"
#include "report/texttable.h"
#include "report/windoworder.h"

#include <algorithm>
#include <iterator>

namespace Uicov::Report {

using Coverage::CoverageTree;
using Coverage::Events;
using Coverage::State;

namespace {

/** Of the word that begins a line below a window. */
constexpr int wordColumns = 10;

} // namespace

QStringList TextReport::row(const QString& name, const CoverageTree::Totals& totals) const {
    if (m_tree.isOfControls()) {
        return controlsRow(name, totals, m_precision);
    }
    return {name,
            QString::number(totals.elements),
            QString::number(totals.used),
            QString::number(totals.shown),
            QString::number(totals.missed),
            Base::percentText(totals.used, totals.elements, m_precision),
            QStringLiteral("%1/%2").arg(totals.coveredEvents).arg(totals.events)};
}

TextReport::TextReport(const CoverageTree& tree)
    : m_tree(tree) {}

QString TextReport::line(const QString& word, Coverage::NodeId node, const QString& rest) const {
    return QStringLiteral("    ") + word.leftJustified(wordColumns) +
           stepsBelowWindow(m_tree, node) + rest;
}

QStringList TextReport::missedLines(Coverage::WindowId window) const {
    if (m_tree.isOfControls()) {
        return missedControls(window);
    }
    QStringList lines;
    for (const Coverage::NodeId node : m_tree.nodesOf(window)) {
        const CoverageTree::Node& element = m_tree.node(node);
        if (element.isMenu && !element.isOpenedMenu) {
            lines.append(line(QStringLiteral("unopened"), node));
        } else if (lacksEvents(m_tree, node)) {
            lines.append(line(wordFor(m_tree.stateOf(node)), node,
                              QStringLiteral("  (never: ") +
                                  uncoveredEvents(element).join(QStringLiteral(", ")) +
                                  QLatin1Char(')')));
        }
    }
    return lines;
}

QStringList TextReport::missedControls(Coverage::WindowId window) const {
    QStringList lines;
    for (const Coverage::NodeId node : elementsInOrder(m_tree, window)) {
        if (isBelowUnseenView(m_tree, node)) {
            continue; // told with the view
        }
        if (isUnseenView(m_tree, node)) {
            lines.append(QStringLiteral("    ") + unseenWord().leftJustified(wordColumns) +
                         neverOpenedText(m_tree, node));
        } else if (lacksEvents(m_tree, node)) {
            const CoverageTree::Node& control = m_tree.node(node);
            lines.append(line(wordOf(m_tree, node), node,
                              membersText(control) + waysText(control) + versionText(control)));
        }
    }
    return lines;
}

QStringList TextReport::contextLines(Coverage::WindowId window) const {
    QStringList lines;
    for (const Coverage::NodeId node : elementsInOrder(m_tree, window)) {
        if (m_tree.counts(node) && m_tree.stateOf(node) == State::Used) {
            const CoverageTree::Node& element = m_tree.node(node);
            lines.append(line(wordFor(State::Used), node,
                              membersText(element) + waysText(element) + QStringLiteral("  [") +
                                  contextsOf(m_tree, node).join(QStringLiteral(", ")) +
                                  QLatin1Char(']')));
        }
    }
    return lines;
}

QStringList TextReport::groupLines(Coverage::WindowId window) const {
    QStringList lines;
    for (const Coverage::NodeId node : elementsInOrder(m_tree, window)) {
        const CoverageTree::Node& group = m_tree.node(node);
        if (!m_tree.counts(node) || group.members < 2) {
            continue;
        }
        lines.append(line(QStringLiteral("group"), node, membersText(group)));
        QStringList names = group.memberNames.keys();
        std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
            return Base::compareNaturally(a, b) < 0;
        });
        for (const QString& name : qAsConst(names)) {
            const State state = group.memberNames.value(name) ? State::Used : State::Missed;
            lines.append(QStringLiteral("      ") +
                         (state == State::Used ? wordFor(state) : QStringLiteral("not used"))
                             .leftJustified(wordColumns) +
                         (name.isEmpty()
                              ? QStringLiteral("(without a name)")
                              : QLatin1Char('"') + Base::escaped(name) + QLatin1Char('"')));
        }
    }
    return lines;
}

QStringList TextReport::legend() const {
    if (m_tree.isOfControls()) {
        return controlsLegend();
    }
    return {
        QStringLiteral("Used: operated, or seen where there is nothing to operate. Shown: only "
                       "seen. Missed: neither."),
        QStringLiteral("Cover: share of the elements used. Events: kinds of use (clicked, checked, "
                       "...) that happened / exist.")};
}

QStringList TextReport::notes(const CoverageTree::Totals& totals, int emptyWindows) const {
    QStringList notes = m_notes;
    if (m_tree.isOfControls()) {
        notes.prepend(controlsSummary(totals, m_precision));
        if (totals.unavailable > 0) {
            notes.append(unavailableNote(totals));
        }
    }
    if (totals.neverCountedEvents > 0) {
        const QString boxes = totals.neverCountedEvents == 1
                                  ? QStringLiteral("1 check box")
                                  : QStringLiteral("%1 check boxes").arg(totals.neverCountedEvents);
        notes.append(
            QStringLiteral("\"unchecked\" of ") + boxes +
            QStringLiteral(" is left out of Events: Qt Widgets announces it but it is never "
                           "counted."));
    }
    if (totals.missedUnseen > 0) {
        notes.append(QStringLiteral("%1 of the missed elements may have been seen: they do not "
                                    "announce that (Qt Quick items).")
                         .arg(totals.missedUnseen));
    }
    if (emptyWindows > 0) {
        notes.append(emptyWindows == 1
                         ? QStringLiteral("1 window is not listed: nothing in it counts.")
                         : QStringLiteral("%1 windows are not listed: nothing in them counts.")
                               .arg(emptyWindows));
    }
    return notes;
}

void TextReport::addWindows(TextTable& table, const QString& application,
                            const QString& indentation) const {
    const QList<Coverage::WindowId> windows = sortedWindows(m_tree, m_order);
    for (const Coverage::WindowId window : windows) {
        const CoverageTree::Totals totals = m_tree.totalsOf(window);
        if (m_tree.node(window).application != application || isSkipped(totals)) {
            continue;
        }
        const QString step = displayedStep(m_tree.node(window).step);
        const QString name = m_nameColumns > 0 ? Base::elided(step, m_nameColumns) : step;
        table.addRow(row(indentation + name, totals));
        const QStringList lines = (m_listsMissed ? missedLines(window) : QStringList()) +
                                  (m_listsContexts ? contextLines(window) : QStringList()) +
                                  (m_listsGroups ? groupLines(window) : QStringList());
        for (const QString& line : lines) {
            table.addLine(indentation + line);
        }
    }
}

bool TextReport::isSkipped(const CoverageTree::Totals& totals) const {
    return m_skipsCovered && totals.used == totals.elements && totals.seenViews == totals.views;
}

QStringList TextReport::header() const {
    if (m_tree.isOfControls()) {
        return controlsTitles();
    }
    return {QStringLiteral("Window"), QStringLiteral("Elements"), QStringLiteral("Used"),
            QStringLiteral("Shown"),  QStringLiteral("Missed"),   QStringLiteral("Cover"),
            QStringLiteral("Events")};
}

QString TextReport::toString() const {
    TextTable table;
    table.addRow(header());
    table.addRule();
    CoverageTree::Totals all;
    int emptyWindows = 0;
    int skippedWindows = 0;
    QMap<QString, CoverageTree::Totals> applications;
    const QList<Coverage::WindowId> windows = m_tree.windows();
    for (const Coverage::WindowId window : windows) {
        const CoverageTree::Totals totals = m_tree.totalsOf(window);
        all += totals;
        if (totals.elements == 0 && totals.views == 0) {
            ++emptyWindows;
        } else {
            skippedWindows += isSkipped(totals) ? 1 : 0;
            applications[m_tree.node(window).application] += totals;
        }
    }
    for (auto it = applications.cbegin(); it != applications.cend(); ++it) {
        // One application needs no name; several each get their sum above their windows.
        const bool isOneOfSeveral = applications.size() > 1;
        if (isOneOfSeveral) {
            table.addRow(row(Base::escaped(it.key()), it.value()));
        }
        addWindows(table, it.key(), isOneOfSeveral ? QStringLiteral("  ") : QString());
        if (isOneOfSeveral && std::next(it) != applications.cend()) {
            table.addLine(QString());
        }
    }
    table.addRule();
    table.addRow(row(QStringLiteral("TOTAL"), all));
    QString text = table.toString() + QLatin1Char('\n');
    text += legend().join(QLatin1Char('\n')) + QLatin1Char('\n');
    QStringList foot = notes(all, emptyWindows);
    if (skippedWindows > 0) {
        foot.append(QStringLiteral("Windows not listed since all of them is used: %1.")
                        .arg(skippedWindows));
    }
    if (!foot.isEmpty()) {
        text += QLatin1Char('\n') + foot.join(QLatin1Char('\n')) + QLatin1Char('\n');
    }
    return text;
}

} // namespace Uicov::Report
