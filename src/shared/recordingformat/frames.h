// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recordingformat/recordingformat.h"

#include <QByteArray>
#include <QPair>
#include <QString>
#include <QVariant>
#include <QVector>

/*
 * Makes the bytes of a recording: the file header and whole frames with their checksums. Nothing
 * here knows of files. The time is always in microseconds since the recording was opened.
 */
namespace RecordingFormat {

/** Keys and values of the Process frame, in the order in which they are written. */
using ProcessInfo = QVector<QPair<QString, QString>>;

/** Of plainVersion or of sharedVersion; nothing is behind it yet. */
QByteArray fileHeader(quint32 ofVersion = plainVersion);
QByteArray processFrame(quint64 time, const ProcessInfo& info);
/** Null when there are more than 255 arguments or when the frame would be too long. */
QByteArray messageFrame(quint64 time, int channel, const QString& name,
                        const QList<QVariant>& arguments);
/**
 * Appends that frame to the bytes; false, and nothing is changed, where it would be null.
 * @param encodedName the name in UTF-8
 */
bool appendMessageFrame(QByteArray& bytes, quint64 time, int channel, const QByteArray& encodedName,
                        const QList<QVariant>& arguments);
QByteArray logFrame(quint64 time, Severity severity, const QString& text);
QByteArray markFrame(quint64 time, const QString& name);
QByteArray endFrame(quint64 time, quint64 messages);
/** What was left out so far. */
QByteArray lossFrame(quint64 time, quint64 pictures, quint64 others);
/** A frame of that many bytes, of a type that readers skip. At least frameHeaderSize. */
QByteArray fillerFrame(quint64 length);

} // namespace RecordingFormat
