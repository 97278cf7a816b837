#pragma once

#include <QMap>
#include <QString>

namespace Vorsk::UIAbstraction {
class UIElement;
}

namespace Uicov::Report {

/** One event of an element, over all that was replayed. */
struct EventCoverage {
    qint64 count = 0;
    /** The element announces the event but this version never counts it: outside every ratio. */
    bool isNeverCounted = false;

    bool isCovered() const { return count > 0; }
};

/** An element's events by name. */
using Events = QMap<QString, EventCoverage>;

/** How far an element was exercised. */
enum class State { Used, Shown, Missed };

/** What counts as covered: the rules, apart from where the numbers come from and go to. */
namespace CoverageRules {

/** The event that tells that something was seen on the screen, and no more. */
QString shownEvent();

/**
 * Whether the element is one that people can see or operate: no transparent node, and at least one
 * event. That it must not stand below a transparent subgraph is for the caller, who knows the path.
 */
bool isCountable(const Vorsk::UIAbstraction::UIElement& element);

/**
 * True for "unchecked" of a Qt Widgets check box, whose observer announces it and never counts it.
 * Both toolkits say "CheckBox"; only the Qt Quick tracker, which does count it, makes the subgraph
 * below one transparent.
 */
bool isNeverCounted(const Vorsk::UIAbstraction::UIElement& element, const QString& event);

/** The element's events as they count. */
Events eventsOf(const Vorsk::UIAbstraction::UIElement& element);

/**
 * Used: an event other than "shown" is covered, or "shown" is the only event that counts and is
 * covered. Shown: only "shown" is covered. Missed: nothing is.
 */
State stateOf(const Events& events);

} // namespace CoverageRules

} // namespace Uicov::Report
