// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QByteArray;
class QString;
QT_END_NAMESPACE

namespace RecordingFormat {

/**
 * Appends one whole frame to a recording that the process of an application is writing, from
 * another process: by one write(2) in version 1, by the protocol of sharedheader.h in version 2,
 * where it waits for other processes that do the same, but never makes the application wait.
 * @return false when the file cannot be written
 */
bool appendFromOtherProcess(const QString& path, quint32 ofVersion, const QByteArray& frame);

} // namespace RecordingFormat
