// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/pattern.h"

#include <QMap>
#include <QPair>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

namespace Uicov::Coverage {

/** Elements that are left out of every number. All that is given has to match. */
struct IgnoreRule {
    Pattern key;
    /** Matched with the window's step, as Window "Panel", and with its label alone. */
    Pattern window;
    Pattern type;
    Pattern className;
    Pattern text;
    /** For people who wonder later. */
    QString why;
    /** Where it stands: line of the file. */
    int line = 0;

    /** What it asks for, in one line. */
    QString toString() const;
};

/** A caption is compared as if it were another. */
struct LabelRule {
    QRegularExpression pattern;
    QString replacement;
};

/** What has to hold for a run of tests to be good enough. */
struct Gates {
    /** Percent of the elements that have to be used, over all. */
    std::optional<double> failUnder;
    /** The same for each window that the pattern matches. */
    QVector<QPair<Pattern, double>> failUnderWindows;
    /** Windows of which at least one has to have been opened. */
    QVector<Pattern> requiredWindows;
    /** Kinds of difference that "uicov diff" does not accept, out of differences(). */
    QStringList failOn;

    /** "lost", "new-missed", "removed". */
    static QStringList differences();
};

/** What a report looks like unless told otherwise. */
struct ReportDefaults {
    std::optional<int> precision;
    /** One of sorts(); empty for the order of names. */
    QString sort;
    bool skipsCovered = false;
    bool listsMissed = false;

    /** What windows can be sorted by; "-" in front turns the order round. */
    static QStringList sorts();
    static constexpr int mostDigits = 6;
};

/** All that uicov.toml can say. A value; what is not said is empty. */
struct Configuration {
    /** The file that it came from; empty for none. */
    QString path;
    QVector<IgnoreRule> ignoreRules;
    QVector<LabelRule> labelRules;
    /** Controls whose key one of the patterns matches are one group of that name. */
    QVector<QPair<QString, QVector<Pattern>>> groups;
    /** Kinds of names, out of Runs::ControlNames::kinds(), that controls are called by first. */
    QStringList preferredNames;
    /** By standard type: what is asked of an element, all of it, before it is used: events, and of
     * controls "enabled", "way=NAME" and "way=*". */
    QMap<QString, QStringList> criteria;
    Gates gates;
    ReportDefaults report;
    /** Wildcard patterns over objectName, QML id and class: what "uicov run" has blacked out of
     * pictures. */
    QStringList redacted;

    /** The first group that a pattern puts the control of that key into; null for none. */
    QString groupOf(const QString& key) const;
    /** The label as the rules make it, one after the other. */
    QString appliedTo(const QString& label) const;
};

} // namespace Uicov::Coverage
