// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "matching.h"

#include <QString>
#include <QVector>

/**
 * Holds one recording against what the plugin saw meanwhile: are the controls known, are presses to
 * which they reacted counted, and nothing else. Computed when it is made.
 */
class Comparison {
public:
    /** One of a figure's parts that is not as it is to be. */
    struct Miss {
        QString className;
        /** For a person to find it. */
        QString text;
    };
    struct Figure {
        QString name;
        int total = 0;
        QVector<Miss> misses;

        int good() const { return total - misses.size(); }
        /** In percent of the total; 100 of nothing. */
        double share() const;
    };

    /** Both are borrowed and outlive this. */
    Comparison(const JournalFile& journal, const ControlsRecording& recording);

    /** Operable nodes that are controls of the recording or parts of one. */
    const Figure& universe() const { return m_universe; }
    /** Presses that a control reacted to and that are uses of it. */
    const Figure& recall() const { return m_recall; }
    /** Controls used that were given input. */
    const Figure& precision() const { return m_precision; }
    /** Nodes of kinds that are documented as not counted. */
    int leftOut() const { return m_leftOut; }
    /** Controls of the recording that were used at all, and how many there are. */
    int controls() const { return m_controls; }

private:
    void compareUniverse();
    bool isKnown(const JournalFile::Node& node) const;
    void compareRecall();
    void compareStep(const JournalFile::Step& step, qint64 end);
    bool takeUse(const QSet<int>& objects, qint64 from, qint64 end);
    bool takeUseOf(int element, qint64 from, qint64 to);
    void comparePrecision();
    bool isGiven(int element, qint64 time) const;
    qint64 reachOf(qint64 time) const;
    bool isTriggered(int element, qint64 time) const;
    bool isToldBetween(int element, qint64 from, qint64 to) const;
    QString describe(int object) const;

    const JournalFile& m_journal;
    const ControlsRecording& m_recording;
    Matching m_matching;
    Figure m_universe{QStringLiteral("universe"), 0, {}};
    Figure m_recall{QStringLiteral("recall"), 0, {}};
    Figure m_precision{QStringLiteral("precision"), 0, {}};
    int m_leftOut = 0;
    int m_controls = 0;
    /** Where the last step began among the inputs and the reactions. */
    int m_input = 0;
    int m_reaction = 0;
    /** By element: until when its uses are those of presses that were looked at. */
    QHash<int, qint64> m_taken;
};
