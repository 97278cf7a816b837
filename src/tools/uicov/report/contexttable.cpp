// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/contexttable.h"

#include "base/displaytext.h"
#include "coverage/coveragetree.h"
#include "report/markdowntext.h"
#include "report/texttable.h"

#include <QSet>

namespace Uicov::Report {

using Coverage::CoverageTree;
using Coverage::EventCoverage;
using Coverage::Events;
using Coverage::State;

namespace {

struct Row {
    int elements = 0;
    int elementsOnlyHere = 0;
    int events = 0;
    int eventsOnlyHere = 0;
};

/** What of it happened in that context, or in the others. */
Events eventsIn(const Events& all, Coverage::ContextId context, bool wantsOthers) {
    Events events = all;
    for (EventCoverage& event : events) {
        const qint64 here = event.byContext.value(context);
        event.count = wantsOthers ? event.count - here : here;
    }
    return events;
}

void countElement(const CoverageTree& tree, Coverage::NodeId node,
                  QMap<Coverage::ContextId, Row>& rows) {
    const Events& events = tree.node(node).events;
    QSet<Coverage::ContextId> touching;
    for (const EventCoverage& event : events) {
        if (event.isNeverCounted) {
            continue;
        }
        for (auto hit = event.byContext.cbegin(); hit != event.byContext.cend(); ++hit) {
            Row& row = rows[hit.key()];
            ++row.events;
            row.eventsOnlyHere += event.byContext.size() == 1 ? 1 : 0;
            touching.insert(hit.key());
        }
    }
    if (tree.stateOf(node) != State::Used) {
        return;
    }
    for (const Coverage::ContextId context : qAsConst(touching)) {
        Row& row = rows[context];
        row.elements += tree.stateOf(node, eventsIn(events, context, false)) == State::Used ? 1 : 0;
        row.elementsOnlyHere +=
            tree.stateOf(node, eventsIn(events, context, true)) == State::Used ? 0 : 1;
    }
}

QMap<QString, Row> rowsOf(const CoverageTree& tree) {
    QMap<Coverage::ContextId, Row> rows;
    for (int i = 0; i < tree.contexts().size(); ++i) {
        rows.insert(static_cast<Coverage::ContextId>(i), Row());
    }
    const QList<Coverage::WindowId> windows = tree.windows();
    for (const Coverage::WindowId window : windows) {
        for (const Coverage::NodeId node : tree.nodesOf(window)) {
            if (tree.counts(node)) {
                countElement(tree, node, rows);
            }
        }
    }
    QMap<QString, Row> byName;
    for (auto it = rows.cbegin(); it != rows.cend(); ++it) {
        byName.insert(tree.contextName(it.key()), it.value());
    }
    return byName;
}

QString whatCounts(const CoverageTree& tree) {
    return tree.isOfControls() ? QStringLiteral("Controls") : QStringLiteral("Elements");
}

QStringList titles(const CoverageTree& tree) {
    return {QStringLiteral("Context"), whatCounts(tree), QStringLiteral("only here"),
            QStringLiteral("Events"), QStringLiteral("only here")};
}

QStringList cellsOf(const QString& name, const Row& row) {
    return {name, QString::number(row.elements), QString::number(row.elementsOnlyHere),
            QString::number(row.events), QString::number(row.eventsOnlyHere)};
}

QString displayed(const QString& context) {
    return context.isEmpty() ? QStringLiteral("(no context)") : Base::escaped(context);
}

QString legend(const CoverageTree& tree) {
    return whatCounts(tree) +
           QStringLiteral(": used by what happened in this context alone. Events: kinds of "
                          "use that happened in it.\nOnly here: what would not be used, or not "
                          "have happened, without this context.\n");
}

} // namespace

QString contextTable(const CoverageTree& tree) {
    TextTable table;
    table.addRow(titles(tree));
    table.addRule();
    const QMap<QString, Row> rows = rowsOf(tree);
    for (auto it = rows.cbegin(); it != rows.cend(); ++it) {
        table.addRow(cellsOf(displayed(it.key()), it.value()));
    }
    return table.toString() + QLatin1Char('\n') + legend(tree);
}

QString contextTableMarkdown(const CoverageTree& tree) {
    const auto line = [](const QStringList& cells) {
        return QStringLiteral("| ") + cells.join(QStringLiteral(" | ")) + QStringLiteral(" |\n");
    };
    QString text = line(titles(tree)) + QStringLiteral("|:---|---:|---:|---:|---:|\n");
    const QMap<QString, Row> rows = rowsOf(tree);
    for (auto it = rows.cbegin(); it != rows.cend(); ++it) {
        text += line(cellsOf(markdownMarkup(displayed(it.key())), it.value()));
    }
    return text + QLatin1Char('\n') + legend(tree);
}

} // namespace Uicov::Report
