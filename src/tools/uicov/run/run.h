// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "run/runelement.h"

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>

#include <vector>

namespace Uicov::Runs {

/**
 * What one process's run left behind, whether it was read from a recording or from a data file: the
 * common ground of every verb that reads. A value; equal runs compare equal member by member.
 */
struct Run {
    /** UUID without braces, in lower case; the same run has the same one wherever it is kept. */
    QString uuid;
    /** UUID of the "uicov run" that started the process; empty when none did. */
    QString session;
    QString application;
    /** Which extensions made the recording, by their base names; empty for what does not tell,
     * which the classic one made. */
    QString extension;
    /** Path on the machine that recorded. */
    QString executable;
    QString qtVersion;
    QString platform;
    QString locale;
    QString architecture;
    /** ISO 8601, UTC. */
    QString started;
    /** What the user called the run by: --label NAME=VALUE. */
    QMap<QString, QString> labels;

    /** False when something that the application sent is, or may be, missing. */
    bool isComplete = true;
    /** Half a sentence that says what happened to a partial run; empty for a complete one. */
    QString partialReason;
    /** Bytes at the end of the recording that could not be read. */
    qint64 bytesLost = 0;
    /** Messages that carried a record, whether it could be used or not. */
    qint64 messages = 0;
    /** Those of them that could not be used. */
    qint64 messagesLost = 0;

    /**
     * Names of the contexts, in the order in which they first began; hits name them by index. The
     * first is that of the run as a whole: what was given with --context, else empty.
     */
    QStringList contexts;
    /** In the order in which they were first announced. */
    std::vector<RunElement> elements;
    /** Warnings logged while recording, equal ones folded, each with its number. */
    QMap<QString, qint64> warnings;
    /** PNG by hash as elements name it; filled only where pictures were asked for. */
    QHash<QByteArray, QByteArray> pictures;

    /** The line by which pictures that a size limit left out stand among the warnings. */
    static QString picturesLeftOutLine();
    /** Number of pictures that are missing since the recording reached its size limit. */
    qint64 picturesLeftOut() const;

    /** Whether the extension that knows views and controls made it. */
    bool isOfControls() const;

    const RunElement& element(int index) const { return elements[static_cast<std::size_t>(index)]; }
};

} // namespace Uicov::Runs
