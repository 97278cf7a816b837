// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <utility>

namespace Uicov::Runs {

/** How a project wants elements to be called. A value; what is empty changes nothing. */
struct NameRules {
    using LabelRule = std::function<QString(const QString& label)>;
    /** The group that the control of that key belongs to; null for none. */
    using GroupRule = std::function<QString(const QString& key)>;

    NameRules() = default;
    /** Where only labels have a rule. */
    NameRules(LabelRule labels) // NOLINT(google-explicit-constructor)
        : label(std::move(labels)) {}

    /** Applied to each normalised label. */
    LabelRule label;
    /** Applied to the key of each control, in which its own step has no ordinal. */
    GroupRule group;
    /** Which of its names a control is called by to people, out of ControlNames::kinds(): the first
     * that it has; those that are not here come behind, in their usual order. */
    QStringList captions;
};

} // namespace Uicov::Runs
