#include "report/coveragerules.h"

#include "uiabstraction/uielement.h"

namespace Uicov::Report::CoverageRules {

using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

QString shownEvent() {
    return QStringLiteral("shown");
}

bool isCountable(const UIElement& element) {
    return !element.isTransparentNode() && !element.usage().isEmpty();
}

bool isNeverCounted(const UIElement& element, const QString& event) {
    return event == QLatin1String("unchecked") &&
           element.standardType().name() == QLatin1String("CheckBox") &&
           !element.isSubgraphTransparent();
}

Events eventsOf(const UIElement& element) {
    Events events;
    const QMap<UIEvent, int> usage = element.usage();
    for (auto it = usage.cbegin(); it != usage.cend(); ++it) {
        const QString name = it.key().name();
        events.insert(name, EventCoverage{it.value(), isNeverCounted(element, name)});
    }
    return events;
}

State stateOf(const Events& events) {
    bool isShown = false;
    bool hasOthers = false;
    for (auto it = events.cbegin(); it != events.cend(); ++it) {
        if (it.key() == shownEvent()) {
            isShown = it->isCovered();
        } else if (!it->isNeverCounted) {
            if (it->isCovered()) {
                return State::Used;
            }
            hasOthers = true;
        }
    }
    if (!isShown) {
        return State::Missed;
    }
    return hasOthers ? State::Shown : State::Used;
}

} // namespace Uicov::Report::CoverageRules
