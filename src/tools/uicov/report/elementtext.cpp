// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/elementtext.h"

#include "base/displaytext.h"

namespace Uicov::Report {

using Coverage::CoverageTree;
using Coverage::Events;
using Runs::ElementKey;

namespace {

/** Where a caption is longer than this it is more than a name. */
constexpr int maximumLabelColumns = 40;
/** Deeper paths lose their middle: nobody reads them, and they would make the report huge. */
constexpr int maximumSteps = 24;

} // namespace

QString displayedStep(ElementKey::Step step) {
    step.label = Base::elided(Base::escaped(step.caption.isEmpty() ? step.label : step.caption),
                              maximumLabelColumns);
    step.caption.clear();
    step.kind = Base::escaped(step.kind);
    step.className = Base::escaped(step.className);
    return step.toString();
}

QString stepsBelowWindow(const CoverageTree& tree, Coverage::NodeId node) {
    const QVector<ElementKey::Step> steps = tree.keyOf(node).steps();
    QStringList texts;
    for (int i = 1; i < steps.size(); ++i) {
        if (steps.size() > maximumSteps && i == maximumSteps / 2) {
            texts.append(QStringLiteral("..."));
            i = steps.size() - maximumSteps / 2;
        }
        texts.append(displayedStep(steps.at(i)));
    }
    return texts.isEmpty() ? QStringLiteral("the window itself")
                           : texts.join(QStringLiteral(" > "));
}

QString wordOf(const CoverageTree& tree, Coverage::NodeId node) {
    const Coverage::State state = tree.stateOf(node);
    return tree.node(node).role == CoverageTree::Node::Role::Control
               ? Coverage::wordForControl(state)
               : Coverage::wordFor(state);
}

QString membersText(const CoverageTree::Node& element) {
    return element.members < 2
               ? QString()
               : QStringLiteral(" \u00d7%1: %2 used").arg(element.members).arg(element.usedMembers);
}

QString neverOpenedText(const CoverageTree& tree, Coverage::NodeId view) {
    int controls = 0;
    for (const Coverage::NodeId node : tree.nodesBelow(view)) {
        controls += tree.counts(node) && tree.stateOf(node) != Coverage::State::Unavailable ? 1 : 0;
    }
    const QString opener = tree.node(view).openedBy;
    return stepsBelowWindow(tree, view) +
           QStringLiteral(" (%1)").arg(controls == 1
                                           ? QStringLiteral("1 control")
                                           : QStringLiteral("%1 controls").arg(controls)) +
           QStringLiteral(": never opened") +
           (opener.isEmpty() ? QString() : QStringLiteral("; by ") + Base::escaped(opener));
}

bool isBelowUnseenView(const CoverageTree& tree, Coverage::NodeId node) {
    for (Coverage::NodeId above = tree.node(node).parent; above != Coverage::NodeId::None;
         above = tree.node(above).parent) {
        const CoverageTree::Node& view = tree.node(above);
        if (view.role == CoverageTree::Node::Role::View && !view.wasSeen) {
            return true;
        }
    }
    return false;
}

QStringList uncoveredEvents(const CoverageTree::Node& element) {
    QStringList names;
    for (auto it = element.events.cbegin(); it != element.events.cend(); ++it) {
        if (!it->isCovered() && !it->isNeverCounted) {
            names.append(Base::escaped(it.key()));
        }
    }
    return names;
}

bool lacksEvents(const CoverageTree& tree, Coverage::NodeId node) {
    if (tree.node(node).role == CoverageTree::Node::Role::Control) {
        // A button that can be clicked and checked is not half used when it was clicked.
        const Coverage::State state = tree.stateOf(node);
        return tree.counts(node) && state != Coverage::State::Used &&
               state != Coverage::State::Unavailable;
    }
    return tree.counts(node) && !uncoveredEvents(tree.node(node)).isEmpty();
}

QStringList contextsOf(const CoverageTree& tree, Coverage::NodeId node) {
    QStringList names;
    const Events& events = tree.node(node).events;
    for (auto event = events.cbegin(); event != events.cend(); ++event) {
        // To be seen is no use, unless there is nothing else to an element.
        if (event.key() == Coverage::shownEvent() && events.size() > 1) {
            continue;
        }
        for (auto it = event->byContext.cbegin(); it != event->byContext.cend(); ++it) {
            const QString& name = tree.contextName(it.key());
            names.append(name.isEmpty() ? QStringLiteral("(no context)") : Base::escaped(name));
        }
    }
    names.sort();
    names.removeDuplicates();
    return names;
}

} // namespace Uicov::Report
