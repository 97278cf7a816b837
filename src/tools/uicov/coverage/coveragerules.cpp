// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coveragerules.h"

#include "run/runelement.h"

#include <algorithm>

namespace Uicov::Coverage {

using Runs::RunElement;

QString shownEvent() {
    return QStringLiteral("shown");
}

QString seenEvent() {
    return QStringLiteral("seen");
}

bool isCountable(const RunElement& element) {
    return !element.isTransparentNode && !element.events.isEmpty();
}

bool isNeverCounted(const RunElement& element, const QString& event) {
    return event == QLatin1String("unchecked") && element.type == QLatin1String("CheckBox") &&
           !element.isSubgraphTransparent;
}

Events eventsOf(const RunElement& element, const QVector<ContextId>& contexts) {
    Events events;
    for (const QString& name : element.events) {
        EventCoverage event;
        event.isNeverCounted = isNeverCounted(element, name);
        events.insert(name, event);
    }
    for (const Runs::Hit& hit : element.hits) {
        const auto event = events.find(hit.event);
        const bool counts = contexts.at(hit.context) != ContextId::None;
        if (event != events.end() && counts) {
            event->count += hit.count;
            event->byContext[contexts.at(hit.context)] += hit.count;
        }
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

State stateOf(const Events& events, const QStringList& criteria) {
    bool isAsked = false;
    bool isMet = true;
    for (const QString& name : criteria) {
        const auto event = events.constFind(name);
        if (event != events.cend() && !event->isNeverCounted) {
            isAsked = true;
            isMet = isMet && event->isCovered();
        }
    }
    if (!isAsked) {
        return stateOf(events);
    }
    if (isMet) {
        return State::Used;
    }
    const bool isSeen = std::any_of(events.cbegin(), events.cend(),
                                    [](const EventCoverage& event) { return event.isCovered(); });
    return isSeen ? State::Shown : State::Missed;
}

} // namespace Uicov::Coverage
