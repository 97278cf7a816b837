// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

namespace Uicov::Recording {

/** The file that a run records into, and its neighbours of processes that the run started. */
class RecordingOutput {
public:
    /** @param path as the user gave it, relative to the working folder */
    explicit RecordingOutput(const QString& path);

    /** The problem when nothing can be written there, or something else than a recording stands
     * there. */
    std::optional<Base::Problem> check() const;
    /** Takes an earlier recording away; to be called right before the start. */
    std::optional<Base::Problem> makeRoom() const;

    QString absolutePath() const { return m_absolutePath; }
    /** Whether the folder that the recording was to stand in is no longer there. */
    bool hasLostItsFolder() const;
    /** Whether there is a file at the path, of whatever content. */
    bool isThere() const;

    /**
     * The recordings that processes of the run have written: the file itself first if it is there,
     * then the others by name. Paths are given as the user gave theirs.
     */
    QStringList recordingsOf(const QString& session) const;

private:
    QString m_path;
    QString m_absolutePath;
};

} // namespace Uicov::Recording
