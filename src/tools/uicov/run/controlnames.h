// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QPair>
#include <QString>
#include <QStringList>

namespace Uicov::Runs {

struct Run;
struct RunElement;

/**
 * What the views and controls of a run are called: to people by what is written on them, in keys by
 * the name that changes least from run to run, from version to version and from language to
 * language.
 */
class ControlNames {
public:
    /** @param run outlives this */
    explicit ControlNames(const Run& run);

    /** Kinds of names, "text" and the attributes that are names, in the order in which people look
     * for them. */
    static QStringList kinds();

    /**
     * For people: its text, else its label, placeholder, accessible name, tool tip, objectName or
     * QML id; null when it has none of them.
     * @param preferred kinds that come first, in this order
     */
    static QString captionOf(const RunElement& element, const QStringList& preferred = {});

    /**
     * For keys: the name that the program's authors gave it where no other of its type beside it
     * has the same, else what is written on it. Null when it has no name.
     */
    QString keyLabelOf(int element) const;

    /** Whether the element is one of those that a view, a repeater or a loader makes again and
     * again. */
    static bool isOfGroup(const RunElement& element);

    /** What people call a group: its component, the last step of where it is made. */
    static QString groupNameOf(const RunElement& element);

    /** Whether the key of the element hangs on a name of the program's authors. */
    bool hasStableName(int element) const { return !authorsName(element).isEmpty(); }

private:
    QString authorsName(int element) const;

    const Run& m_run;
    QHash<QPair<int, QString>, QHash<QString, int>> m_count;
};

} // namespace Uicov::Runs
