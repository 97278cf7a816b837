#pragma once

#include "coverage/coveragetree.h"

#include <QString>
#include <QStringList>

// What the reports that people read say of an element, each text fit for one line of a terminal.
namespace Uicov::Report {

/** The element's steps below its window, shortened where they are many. */
QString stepsBelowWindow(const Coverage::CoverageTree& tree, Coverage::NodeId node);
QString displayedStep(Runs::ElementKey::Step step);
/** Events of the element that count and did not happen. */
QStringList uncoveredEvents(const Coverage::CoverageTree::Node& element);
/** Whether it counts and has such events. */
bool lacksEvents(const Coverage::CoverageTree& tree, Coverage::NodeId node);
/** Contexts in which the element was used, by name. */
QStringList contextsOf(const Coverage::CoverageTree& tree, Coverage::NodeId node);

} // namespace Uicov::Report
