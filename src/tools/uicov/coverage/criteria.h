// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coveragetree.h"

#include <QString>
#include <QStringList>

// What a project can ask of the controls of a type before they are used: events, and attributes:
// "enabled", a way to a command as "way=menu", and each way that there is as "way=*".
namespace Uicov::Coverage {

/** Whether the text is a criterion; false where it asks for an attribute that cannot be asked for.
 */
bool isCriterion(const QString& criterion);

/** Whether the criterion asks for an attribute and not for an event. */
bool asksForAttribute(const QString& criterion);

/** What the criteria ask of that control: each that it can meet, "way=*" as its ways. */
QStringList askedOf(const CoverageTree::Node& control, const QStringList& criteria);

/** Whether the control meets a criterion that askedOf() gave, if those were its events. */
bool isMet(const QString& criterion, const CoverageTree::Node& control, const Events& events);

} // namespace Uicov::Coverage
