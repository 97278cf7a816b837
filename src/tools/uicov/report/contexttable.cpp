#include "report/contexttable.h"

#include "console/displaytext.h"
#include "report/coveragetree.h"
#include "report/texttable.h"

#include <QSet>

namespace Uicov::Report {

namespace {

struct Row {
    int elements = 0;
    int elementsOnlyHere = 0;
    int events = 0;
    int eventsOnlyHere = 0;
};

void countElement(const CoverageTree::Node& element, QMap<int, Row>& rows) {
    QSet<int> touching;
    for (auto event = element.events.cbegin(); event != element.events.cend(); ++event) {
        if (event.key() == CoverageRules::shownEvent()) {
            continue;
        }
        for (auto hit = event->byContext.cbegin(); hit != event->byContext.cend(); ++hit) {
            Row& row = rows[hit.key()];
            ++row.events;
            row.eventsOnlyHere += event->byContext.size() == 1 ? 1 : 0;
            touching.insert(hit.key());
        }
    }
    for (const int context : qAsConst(touching)) {
        ++rows[context].elements;
        rows[context].elementsOnlyHere += touching.size() == 1 ? 1 : 0;
    }
}

} // namespace

QString ContextTable::toString(const CoverageTree& tree) {
    QMap<int, Row> rows;
    for (int i = 0; i < tree.contexts().size(); ++i) {
        rows.insert(i, Row());
    }
    const QList<int> windows = tree.windows();
    for (const int window : windows) {
        for (const int node : tree.nodesOf(window)) {
            if (tree.counts(node)) {
                countElement(tree.node(node), rows);
            }
        }
    }
    QMap<QString, Row> byName;
    for (auto it = rows.cbegin(); it != rows.cend(); ++it) {
        byName.insert(tree.contexts().at(it.key()), it.value());
    }
    TextTable table;
    table.addRow({QStringLiteral("Context"), QStringLiteral("Elements"),
                  QStringLiteral("only here"), QStringLiteral("Events"),
                  QStringLiteral("only here")});
    table.addRule();
    for (auto it = byName.cbegin(); it != byName.cend(); ++it) {
        table.addRow({it.key().isEmpty() ? QStringLiteral("(no context)")
                                         : Console::DisplayText::escaped(it.key()),
                      QString::number(it->elements), QString::number(it->elementsOnlyHere),
                      QString::number(it->events), QString::number(it->eventsOnlyHere)});
    }
    return table.toString() +
           QStringLiteral("\nElements: operated in this context. Events: kinds of use that "
                          "happened in it, but \"shown\".\nOnly here: in no other context; what "
                          "would be missed without it.\n");
}

} // namespace Uicov::Report
