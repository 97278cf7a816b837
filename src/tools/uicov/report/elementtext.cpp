// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/elementtext.h"

#include "base/displaytext.h"

namespace Uicov::Report {

using Coverage::CoverageTree;
using Coverage::Events;
using Runs::ElementKey;

namespace {

/** Deeper paths lose their middle: nobody reads them, and they would make the report huge. */
constexpr int maximumSteps = 24;

/** As people say it: "toolBar" is "tool bar". */
QString spelledOut(const QString& way) {
    QString words;
    for (const QChar character : way) {
        words += character.isUpper() ? QString(QLatin1Char(' ') + character.toLower())
                                     : QString(character);
    }
    return words;
}

/** Tab "Advanced" in Page "Settings" of Window "Panel". */
QString openerText(const CoverageTree& tree, Coverage::NodeId control) {
    Coverage::NodeId view = tree.node(control).parent;
    while (view != Coverage::NodeId::None &&
           tree.node(view).role != CoverageTree::Node::Role::View) {
        view = tree.node(view).parent;
    }
    QString text = displayedStep(tree.node(control).step);
    if (view == Coverage::NodeId::None) {
        return text;
    }
    text += QStringLiteral(" in ") + displayedStep(tree.node(view).step);
    const Coverage::WindowId window = tree.windowOf(control);
    return view == window ? text
                          : text + QStringLiteral(" of ") + displayedStep(tree.node(window).step);
}

QString listed(const QStringList& ways) {
    QStringList words;
    for (const QString& way : ways) {
        words.append(Base::escaped(spelledOut(way)));
    }
    return words.join(QStringLiteral(", "));
}

} // namespace

QString displayedStep(ElementKey::Step step) {
    step.label = Base::escaped(step.caption.isEmpty() ? step.label : step.caption);
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

QString waysOf(const CoverageTree::Node& element) {
    return listed(element.ways) + (element.usedWays.isEmpty()
                                       ? QString()
                                       : QStringLiteral("; used: ") + listed(element.usedWays));
}

QString waysText(const CoverageTree::Node& element) {
    return element.ways.isEmpty()
               ? QString()
               : QStringLiteral("  (ways: ") + waysOf(element) + QLatin1Char(')');
}

QString versionText(const CoverageTree::Node& element) {
    return element.lastVersion.isEmpty()
               ? QString()
               : QStringLiteral("  (last in version ") + Base::escaped(element.lastVersion) +
                     QLatin1Char(')');
}

QString unseenWord() {
    return QStringLiteral("unseen");
}

bool isUnseenView(const CoverageTree& tree, Coverage::NodeId node) {
    const CoverageTree::Node& view = tree.node(node);
    return view.role == CoverageTree::Node::Role::View && !view.wasSeen &&
           view.ignoredBy == Coverage::RuleId::None;
}

QString neverOpenedText(const CoverageTree& tree, Coverage::NodeId view) {
    int controls = 0;
    for (const Coverage::NodeId node : tree.nodesBelow(view)) {
        controls += tree.counts(node) && tree.stateOf(node) != Coverage::State::Unavailable ? 1 : 0;
    }
    const Coverage::NodeId opener = tree.node(view).opener;
    // What a menu leads to may be listed with the window, since it can be reached otherwise too.
    const QString count = controls == 0   ? QString()
                          : controls == 1 ? QStringLiteral(" (1 control)")
                                          : QStringLiteral(" (%1 controls)").arg(controls);
    return stepsBelowWindow(tree, view) + count + QStringLiteral(": never opened") +
           (opener == Coverage::NodeId::None ? QString()
                                             : QStringLiteral("; by ") + openerText(tree, opener)) +
           versionText(tree.node(view));
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
