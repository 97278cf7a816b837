// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

namespace Uicov::Runs {
struct Run;
}

namespace Uicov::Store {

/**
 * How much of a run is there: of two forms of one run, as of a recording copied while it grew and
 * the finished one, the greater is kept. A total order, so that it makes no difference in which
 * order they are met; only equal runs are equal.
 */
struct RunRank {
    qint64 messages = 0;
    bool isComplete = false;
    qint64 bytesLost = 0;
    /** SHA-256 over all that the run consists of. */
    QByteArray digest;

    static RunRank of(const Runs::Run& run);

    /**
     * Whether the run, read from a data file with its pictures or without, is what was written
     * there. True as well for a run that says of no extension that it made it: version 1 of the
     * schema, which that is, took the digest of something that the file does not hold.
     * @param digest as the file has it
     */
    static bool isAsWritten(const Runs::Run& run, const QByteArray& digest);
};

bool operator<(const RunRank& a, const RunRank& b);

} // namespace Uicov::Store
