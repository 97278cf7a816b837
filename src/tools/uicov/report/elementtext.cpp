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
    step.label = Base::elided(Base::escaped(step.label), maximumLabelColumns);
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
