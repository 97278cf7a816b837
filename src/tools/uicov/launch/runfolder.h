// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

namespace Uicov::Launch {

/**
 * The folder beside the data file in which a run keeps its recordings while it goes: found by
 * "uicov mark", and found again when the command itself was killed. A lock tells whether the run
 * still goes, so that neither age nor process ids have to be believed.
 */
class RunFolder {
public:
    /** What others need to know of a run. */
    struct Info {
        QString folder;
        QString session;
        /** Path of the recording of the run's first process. */
        QString recording;
        /** What processes of the run that are still to start read. */
        QString optionsFile;
        /** The data file's own runs stay in it when the run has ended. */
        bool appends = false;
    };

    RunFolder() = default;
    ~RunFolder();
    RunFolder(const RunFolder&) = delete;
    RunFolder& operator=(const RunFolder&) = delete;

    /** Makes the folder, private to its owner. */
    std::optional<Base::Problem> create(const QString& dataFile, const QString& session);
    /** Writes down what others need to know; folder and session are filled in. */
    std::optional<Base::Problem> announce(Info info);

    QString path() const { return m_path; }
    /** Leaves the folder and what is in it when this goes, for nothing but recordings is in it. */
    void keep() { m_isKept = true; }

    /** Of the folder of a run of this user that goes; nothing otherwise. */
    static std::optional<Info> running(const QString& folder);
    /** Folders of runs with that data file that go, or that do not go any more, by name. */
    static QStringList foldersOf(const QString& dataFile, bool wantsRunning);

    /** Whether there is anything in the folder but what a run keeps there for itself. */
    static bool hasRecordings(const QString& folder);

private:
    QString m_path;
    int m_lock = -1;
    bool m_isKept = false;
};

} // namespace Uicov::Launch
