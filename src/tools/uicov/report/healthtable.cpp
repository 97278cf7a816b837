// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/healthtable.h"

#include "base/percentage.h"
#include "coverage/coveragetree.h"
#include "report/elementorder.h"
#include "report/elementtext.h"
#include "report/texttable.h"
#include "report/windoworder.h"

#include <QSet>

namespace Uicov::Report {

using Coverage::CoverageTree;
using Coverage::NodeId;

namespace {

struct Health {
    int keys = 0;
    int named = 0;
    int captioned = 0;
    int bare = 0;
    int ordinals = 0;

    Health& operator+=(const Health& other) {
        keys += other.keys;
        named += other.named;
        captioned += other.captioned;
        bare += other.bare;
        ordinals += other.ordinals;
        return *this;
    }
};

/** Whether others beside the node are called the same, so that only their order tells them apart.
 */
bool isOneOfSeveral(const CoverageTree& tree, NodeId node) {
    const CoverageTree::Node& element = tree.node(node);
    CoverageTree::ElementKey::Step next = element.step;
    if (next.ordinal > 1) {
        return true;
    }
    next.ordinal = 2;
    return element.parent == NodeId::None
               ? tree.findWindow(next, element.application) != NodeId::None
               : tree.findChild(element.parent, next) != NodeId::None;
}

/** The nearest node on the way up, itself included, that is one of several; None where there is
 * none. */
NodeId firstOfSeveral(const CoverageTree& tree, NodeId node) {
    NodeId at = node;
    while (at != NodeId::None && !isOneOfSeveral(tree, at)) {
        at = tree.node(at).parent;
    }
    return at;
}

QStringList row(const QString& name, const Health& health) {
    return {name,
            QString::number(health.keys),
            QString::number(health.named),
            QString::number(health.captioned),
            QString::number(health.bare),
            QString::number(health.ordinals),
            Base::percentText(health.keys - health.ordinals, health.keys, 0)};
}

void count(const CoverageTree& tree, NodeId node, Health& health) {
    const CoverageTree::Node& element = tree.node(node);
    ++health.keys;
    ++(element.hasStableName          ? health.named
       : element.step.label.isEmpty() ? health.bare
                                      : health.captioned);
    health.ordinals += firstOfSeveral(tree, node) == NodeId::None ? 0 : 1;
}

QString placeOf(const CoverageTree& tree, NodeId node) {
    const NodeId window(tree.windowOf(node));
    return node == window ? displayedStep(tree.node(node).step)
                          : stepsBelowWindow(tree, node) + QStringLiteral(" in ") +
                                displayedStep(tree.node(window).step);
}

} // namespace

QString healthTable(const CoverageTree& tree) {
    TextTable table;
    table.addRow({QStringLiteral("Window"), QStringLiteral("Keys"), QStringLiteral("Named"),
                  QStringLiteral("Caption"), QStringLiteral("Bare"), QStringLiteral("Ordinal"),
                  QStringLiteral("Sound")});
    table.addRule();
    Health all;
    QStringList lines;
    QSet<NodeId> told;
    const QList<Coverage::WindowId> windows = sortedWindows(tree, QStringLiteral("name"));
    for (const Coverage::WindowId window : windows) {
        Health health;
        for (const NodeId node : elementsInOrder(tree, window)) {
            if (!tree.isInNumbers(node)) {
                continue;
            }
            count(tree, node, health);
            const NodeId several = firstOfSeveral(tree, node);
            if (several != NodeId::None && !told.contains(several)) {
                told.insert(several);
                lines.append(QStringLiteral("  ") + placeOf(tree, several));
            }
        }
        table.addRow(row(displayedStep(tree.node(window).step), health));
        all += health;
    }
    table.addRule();
    table.addRow(row(QStringLiteral("TOTAL"), all));
    QString text =
        table.toString() +
        QStringLiteral("\nNamed: by objectName or QML id. Caption: by what is written on it, which "
                       "another language changes.\nBare: by nothing. Ordinal: by its place among "
                       "others that are called the same. Sound: share without an ordinal.\n");
    if (!lines.isEmpty()) {
        text += QStringLiteral("\nGive these an objectName or a QML id:\n") +
                lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
    }
    return text;
}

} // namespace Uicov::Report
