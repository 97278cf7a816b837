// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

namespace Uicov::Launch {

/**
 * Which state of its sources an application is run from, as the checkout in the working folder
 * tells. A run carries it as labels, so that a later one finds what to compare itself with.
 */
struct Revision {
    /** Hash in hexadecimal digits; empty where nobody knows. */
    QString commit;
    /** Hashes of the commit's parents, the first one first; empty for a root or where the program
     * that knows them is missing. */
    QStringList parents;
    /** Files that are under version control differ from the commit. */
    bool isChanged = false;

    /** That of the working folder: what git says, else what the variables of a CI service say. */
    static Revision ofWorkingFolder();

    /**
     * The commit and its first-parent ancestors, nearest first.
     * @param most how many at most
     * @return as many as the checkout in the working folder knows, which is few in a shallow clone;
     *         empty where it does not know the commit
     */
    static QStringList firstParents(const QString& commit, int most);

    /** NAME=VALUE each; empty where there is no commit. */
    QStringList toLabels() const;

    // The names of those labels.
    static QString commitLabel();
    static QString parentsLabel();
    static QString changedLabel();
};

} // namespace Uicov::Launch
