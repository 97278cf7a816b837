// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coveragetree.h"

#include <QString>
#include <QStringList>

// What the reports that people read say of an element, each text fit for one line of a terminal.
namespace Uicov::Report {

/** The element's steps below its window, of which the middle is left out where they are very many.
 */
QString stepsBelowWindow(const Coverage::CoverageTree& tree, Coverage::NodeId node);
/** The step with all that is written on it: what is listed can be copied. */
QString displayedStep(Runs::ElementKey::Step step);
/** The word for the node's state: of controls "seen", of elements of the classic extension "shown".
 */
QString wordOf(const Coverage::CoverageTree& tree, Coverage::NodeId node);

/** Of a group how many it has and how many of them were used, behind a space; empty for what is
 * none. */
QString membersText(const Coverage::CoverageTree::Node& element);

/** The ways to a command, and those that were used: "menu, shortcut; used: menu"; empty for what is
 * none. */
QString waysOf(const Coverage::CoverageTree::Node& element);
/** The same in brackets behind two spaces, to stand behind a name. */
QString waysText(const Coverage::CoverageTree::Node& element);

/** Which version was the last that had the element, in brackets behind two spaces; empty where the
 * newest one has it. */
QString versionText(const Coverage::CoverageTree::Node& element);

/** The word for a view that was never seen. */
QString unseenWord();
/** Whether it is a view that was never seen, and that no rule leaves out. */
bool isUnseenView(const Coverage::CoverageTree& tree, Coverage::NodeId node);

/** The view, how many controls are in it and the views below it, and what brings it up, where that
 * is known. */
QString neverOpenedText(const Coverage::CoverageTree& tree, Coverage::NodeId view);

/** Whether the view lies in one that was never seen itself, so that it needs no mention of its own.
 */
bool isBelowUnseenView(const Coverage::CoverageTree& tree, Coverage::NodeId node);

/** Events of the element that count and did not happen. */
QStringList uncoveredEvents(const Coverage::CoverageTree::Node& element);
/** Whether it counts and is not fully used: an element with such events, a control that was not
 * used but could be. */
bool lacksEvents(const Coverage::CoverageTree& tree, Coverage::NodeId node);
/** Contexts in which the element was used, by name. */
QStringList contextsOf(const Coverage::CoverageTree& tree, Coverage::NodeId node);

} // namespace Uicov::Report
