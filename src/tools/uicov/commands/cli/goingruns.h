// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

namespace Uicov::Commands::Cli {

/** What the runs that are going into a data file have recorded so far. A value. */
struct GoingRuns {
    bool areThere = false;
    /** Of all processes that have recorded anything yet. */
    QStringList recordings;
    /** What is in the data file already stays in it. */
    bool append = false;

    /** Those of this user that go into that data file. */
    static GoingRuns into(const QString& dataFile);
};

} // namespace Uicov::Commands::Cli
