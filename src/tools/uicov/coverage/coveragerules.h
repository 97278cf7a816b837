// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/indices.h"
#include "coverage/state.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

namespace Uicov::Runs {
struct RunElement;
}

// What counts as covered: the rules for one element, without state of their own.
namespace Uicov::Coverage {

/** One event of an element, over all runs. */
struct EventCoverage {
    qint64 count = 0;
    /** The element announces the event but this version never counts it: outside every ratio. */
    bool isNeverCounted = false;
    /** The same count by context, which CoverageTree::contexts() names; only where above zero. */
    QMap<ContextId, qint64> byContext = {};

    bool isCovered() const { return count > 0; }
};

/** An element's events by name. */
using Events = QMap<QString, EventCoverage>;

/** The event that tells that something was seen on the screen, and no more. */
QString shownEvent();

/** The event of a view of the controls extension: a person could see it. */
QString seenEvent();

/**
 * Whether the element is one that people can see or operate: no transparent node, and at least one
 * event. That it must not stand below a transparent subgraph is for the caller, who knows the path.
 */
bool isCountable(const Runs::RunElement& element);

/**
 * True for "unchecked" of a Qt Widgets check box, whose observer announces it and never counts it.
 * Both toolkits say "CheckBox"; only the Qt Quick tracker, which does count it, makes the subgraph
 * below one transparent.
 */
bool isNeverCounted(const Runs::RunElement& element, const QString& event);

/**
 * The announced events of the element as they count; what happened without having been announced is
 * left out.
 * @param contexts the tree's number of each of the run's contexts; None for one that does not count
 */
Events eventsOf(const Runs::RunElement& element, const QVector<ContextId>& contexts);

/**
 * Used: an event other than "shown" is covered, or "shown" is the only event that counts and is
 * covered. Shown: only "shown" is covered. Missed: nothing is.
 */
State stateOf(const Events& events);

/**
 * The same where certain events are asked for: used when each of them that the element announces is
 * covered, shown when anything else happened. Without any of them the rule above holds.
 */
State stateOf(const Events& events, const QStringList& criteria);

} // namespace Uicov::Coverage
