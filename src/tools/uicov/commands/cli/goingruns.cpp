// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/cli/goingruns.h"

#include "launch/runfolder.h"
#include "recording/recordingoutput.h"

namespace Uicov::Commands::Cli {

GoingRuns GoingRuns::into(const QString& dataFile) {
    GoingRuns runs;
    const QStringList folders = Launch::RunFolder::foldersOf(dataFile, true);
    for (const QString& folder : folders) {
        if (const auto info = Launch::RunFolder::running(folder)) {
            runs.areThere = true;
            runs.append = runs.append || info->appends;
            runs.recordings +=
                Recording::RecordingOutput(info->recording).recordingsOf(info->session);
        }
    }
    return runs;
}

} // namespace Uicov::Commands::Cli
