#pragma once

#include <vorsk/argumentlist.h>
#include <vorsk/global.h>

#include <QByteArray>
#include <QPair>
#include <QString>
#include <QVector>

#include <recordingformat/recordingformat.h>

namespace VorskHost {

/** Keys and values of the Process frame, in the order in which they are written. */
using ProcessInfo = QVector<QPair<QString, QString>>;

/**
 * Makes the bytes of a recording: the file header and whole frames. Knows nothing of files.
 * The time is always in microseconds since the recording was opened.
 */
namespace FrameBuilder {

/** Of plainVersion or of sharedVersion; nothing is behind it yet. */
VORSK_HOST_EXPORT QByteArray header(quint32 version = RecordingFormat::plainVersion);
VORSK_HOST_EXPORT QByteArray processFrame(quint64 time, const ProcessInfo& info);
/** Null when there are more than 255 arguments or when the frame would be too long. */
VORSK_HOST_EXPORT QByteArray messageFrame(quint64 time, int channel, const QString& name,
                                          const Vorsk::ArgumentList& args);
/** Puts that frame behind the bytes; false, and nothing is changed, where it would be null.
 * @param encodedName the name in UTF-8 */
VORSK_HOST_EXPORT bool appendMessageFrame(QByteArray& bytes, quint64 time, int channel,
                                          const QByteArray& encodedName,
                                          const Vorsk::ArgumentList& args);
VORSK_HOST_EXPORT QByteArray logFrame(quint64 time, RecordingFormat::Severity severity,
                                      const QString& text);
VORSK_HOST_EXPORT QByteArray markFrame(quint64 time, const QString& name);
VORSK_HOST_EXPORT QByteArray endFrame(quint64 time, quint64 messages);
/** What was left out so far. */
VORSK_HOST_EXPORT QByteArray lossFrame(quint64 time, quint64 pictures, quint64 others);

} // namespace FrameBuilder

} // namespace VorskHost
