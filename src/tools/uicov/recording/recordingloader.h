#pragma once

#include "console/message.h"
#include "recording/ending.h"
#include "recording/hookmessage.h"
#include "recording/replay.h"

#include <QMap>
#include <QString>

#include <optional>

namespace Uicov::Recording {

/** Reads one recording from its start to its end into the element model, and keeps the model. */
class RecordingLoader {
public:
    explicit RecordingLoader(const QString& path);

    /** The problem when nothing of the file can be used. */
    std::optional<Console::Problem> load();

    /** What is wrong with the file although it could be used; empty when nothing is. */
    QVector<Console::Problem> problems() const;

    const Replay& replay() const { return m_replay; }
    const ProcessInfo& process() const { return m_process; }
    const Ending& ending() const { return m_ending; }
    /** Warnings that were logged while recording, equal ones folded, each with its number. */
    const QMap<QString, quint64>& warnings() const { return m_warnings; }
    /** Messages that carried a record, sound or not. */
    quint64 records() const { return m_records; }

private:
    void take(const QByteArray& body);

    QString m_path;
    Replay m_replay;
    ProcessInfo m_process;
    Ending m_ending;
    QMap<QString, quint64> m_warnings;
    quint64 m_records = 0;
    quint64 m_damagedRecords = 0;
    quint64 m_unknownRecords = 0;
};

} // namespace Uicov::Recording
