// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QtGlobal>

// What the recordings of further processes are called, where one of that path is there already.
namespace RecordingFormat {

/**
 * The path of the recording of that process: "a.uirec" gives "a-12.uirec", any other name keeps its
 * ending, so that "a.bin" gives "a.bin-12.uirec".
 * @param ordinal counts the recordings of one process from 1
 */
QString pathForProcess(const QString& path, qint64 process, int ordinal);

/** Whether pathForProcess() gives that file name for the path, whatever the process. */
bool isNameForProcess(const QString& fileName, const QString& path);

} // namespace RecordingFormat
