// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coverageresult.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <vector>

namespace Uicov::Coverage {

/**
 * What differs between two coverages, element by element, matched by application and exact key.
 * What was used and is not any more is lost, whether the element is still known or its whole view
 * was not opened; only what is missing in a view that was opened is removed. Guesses stand apart
 * and change nothing else.
 */
class Comparison {
public:
    struct Change {
        QString application;
        QString key;
        /** Of the element that is not used: what it is instead. */
        State state = State::Missed;
        /** Key of the outermost view around it, perhaps itself, that was opened in the base and is
         * not now; empty for none. */
        QString with = {};
    };

    /** A removed element and a new one that may be the same. */
    struct Guess {
        QString application;
        QString oldKey;
        QString newKey;
        /** What makes it likely. */
        QString why;
    };

    /** What ran before, the newest first. */
    using Earlier = std::vector<const CoverageResult*>;

    /** @param earlier coverages from before the base; they tell which keys are flapping */
    Comparison(const CoverageResult& base, const CoverageResult& current,
               const Earlier& earlier = {});

    /** Used in the base, not used now, and not flapping. */
    const QVector<Change>& lost() const { return m_lost; }
    /** Views that were seen in the base and are not now; empty for runs of the classic extension.
     */
    const QVector<Change>& lostViews() const { return m_lostViews; }
    /** There but not used in the base, and used now. */
    const QVector<Change>& gained() const { return m_gained; }
    /** Views that are seen now and were not in the base. */
    const QVector<Change>& gainedViews() const { return m_gainedViews; }
    /** Not there in the base, and not used now. */
    const QVector<Change>& newMissed() const { return m_newMissed; }
    /** Not there in the base, and used now. */
    const QVector<Change>& newUsed() const { return m_newUsed; }
    /** There in the base, and not there now although the view around it was opened. */
    const QVector<Change>& removed() const { return m_removed; }
    /** Used in some of the base and the earlier coverages, but not in all that came after the
     * element was first there; with the state of now. */
    const QVector<Change>& flapping() const { return m_flapping; }
    const QVector<Guess>& renamed() const { return m_renamed; }

    /** Elements that were not used in the base and of which nothing is known now, since their view
     * was not opened. */
    int unknown() const { return m_unknown; }
    /** Applications and contexts of the base without a run now, in words. */
    const QStringList& notRun() const { return m_notRun; }
    /** Whether the runs are those of the controls extension. */
    bool isOfControls() const { return m_isOfControls; }

    CoverageTree::Totals baseTotals() const { return m_baseTotals; }
    CoverageTree::Totals currentTotals() const { return m_currentTotals; }

    bool isEmpty() const;

    /** How many changes of that kind there are, out of Config::Gates::differences(). */
    int count(const QString& kind) const;

private:
    void compareElements(const CoverageResult& base, const CoverageResult& current,
                         const Earlier& earlier);
    void compareViews(const CoverageTree& base, const CoverageTree& current);
    void compareRuns(const CoverageResult& base, const CoverageResult& current);

    QVector<Change> m_lost;
    QVector<Change> m_lostViews;
    QVector<Change> m_gained;
    QVector<Change> m_gainedViews;
    QVector<Change> m_newMissed;
    QVector<Change> m_newUsed;
    QVector<Change> m_removed;
    QVector<Change> m_flapping;
    int m_unknown = 0;
    QStringList m_notRun;
    bool m_isOfControls = false;
    QVector<Guess> m_renamed;
    CoverageTree::Totals m_baseTotals;
    CoverageTree::Totals m_currentTotals;
};

} // namespace Uicov::Coverage
