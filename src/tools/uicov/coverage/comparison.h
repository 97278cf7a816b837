// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coverageresult.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace Uicov::Coverage {

/**
 * What differs between two coverages, element by element, matched by application and exact key.
 * Guesses stand apart and change nothing else.
 */
class Comparison {
public:
    struct Change {
        QString application;
        QString key;
        /** Of the element that is not used: what it is instead. */
        State state = State::Missed;
    };

    /** A removed element and a new one that may be the same. */
    struct Guess {
        QString application;
        QString oldKey;
        QString newKey;
        /** What makes it likely. */
        QString why;
    };

    Comparison(const CoverageResult& base, const CoverageResult& current);

    /** Used in the base, and there but not used now. */
    const QVector<Change>& lost() const { return m_lost; }
    /** There but not used in the base, and used now. */
    const QVector<Change>& gained() const { return m_gained; }
    /** Not there in the base, and not used now. */
    const QVector<Change>& newMissed() const { return m_newMissed; }
    /** Not there in the base, and used now. */
    const QVector<Change>& newUsed() const { return m_newUsed; }
    /** There in the base, and not there now. */
    const QVector<Change>& removed() const { return m_removed; }
    const QVector<Guess>& renamed() const { return m_renamed; }

    CoverageTree::Totals baseTotals() const { return m_baseTotals; }
    CoverageTree::Totals currentTotals() const { return m_currentTotals; }

    bool isEmpty() const;

    /** How many changes of that kind there are, out of Config::Gates::differences(). */
    int count(const QString& kind) const;

private:
    QVector<Change> m_lost;
    QVector<Change> m_gained;
    QVector<Change> m_newMissed;
    QVector<Change> m_newUsed;
    QVector<Change> m_removed;
    QVector<Guess> m_renamed;
    CoverageTree::Totals m_baseTotals;
    CoverageTree::Totals m_currentTotals;
};

} // namespace Uicov::Coverage
