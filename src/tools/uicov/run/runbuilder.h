// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recording/ending.h"
#include "recording/hookmessage.h"
#include "recording/replay.h"
#include "run/controlstates.h"
#include "run/picturedplaces.h"
#include "run/run.h"

#include <QHash>
#include <QMap>
#include <QPair>

namespace Uicov::Recording {
struct Frame;
}

namespace Uicov::Runs {

/**
 * Makes a run out of a recording's frames, in their order: replays the records into the element
 * model, and beside it keeps in which context what was counted. Memory is bounded by the model and
 * the last picture of each element.
 */
class RunBuilder {
public:
    /** Keeps the pictures, which are left out otherwise. To be called before the first frame. */
    void setTakesPictures(bool takes) { m_takesPictures = takes; }

    void add(const Recording::Frame& frame);

    /** True once a frame told the run's UUID. */
    bool isNamed() const { return m_isNamed; }

    /** The run as it is with all frames so far. */
    Run build(const Recording::Ending& ending) const;

    /** The element model as it is with all frames so far. */
    const Recording::Replay& replay() const { return m_replay; }

    quint64 records() const { return m_records; }
    quint64 damagedRecords() const { return m_damagedRecords; }
    quint64 unknownRecords() const { return m_unknownRecords; }
    /** What the recording says that it left out. */
    const Recording::Loss& loss() const { return m_loss; }
    quint64 recordsWithoutElement() const { return m_replay.recordsWithoutElement(); }

private:
    struct ContextCount {
        qint64 count = 0;
        /** Milliseconds since the recording began. */
        qint64 first = 0;
        qint64 last = 0;
    };

    struct EventCount {
        /** The element itself says that it can happen. */
        bool isAnnounced = false;
        int last = 0;
        /** By index of the context. */
        QMap<int, ContextCount> byContext;
    };

    struct Seen {
        QMap<QString, EventCount> events;
        /** PNG; empty when there is none. */
        QByteArray picture;
    };

    void takeProcess(const QByteArray& body);
    void takeMessage(const QByteArray& body);
    void takeRecord(Recording::Record& record);
    void takeAnnounced(const Vorsk::UIAbstraction::UIElement& announced);
    void count(EventCount& event, int count) const;
    void enterContext(const QString& dynamicName);
    void fillElements(Run& run) const;
    void fillSights(Run& run) const;
    static void fillCounts(const Seen& seen, RunElement& element);

    bool m_takesPictures = false;
    Recording::Replay m_replay;
    ControlStates m_states;
    PicturedPlaces m_pictured;
    /** Of the frame that is being taken: milliseconds since the recording began. */
    qint64 m_time = 0;
    Recording::ProcessInfo m_process;
    bool m_isNamed = false;
    QHash<QString, Seen> m_seen;
    QMap<QString, qint64> m_warnings;
    QStringList m_contexts{QString()};
    QHash<QString, int> m_contextIndex{{QString(), 0}};
    int m_context = 0;
    Recording::Loss m_loss;
    quint64 m_records = 0;
    quint64 m_damagedRecords = 0;
    quint64 m_unknownRecords = 0;
};

} // namespace Uicov::Runs
