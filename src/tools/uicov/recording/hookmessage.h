// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recordingformat/recordingformat.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVector>

namespace Uicov::Recording {

/** What the Process frame says about the application; keys of RecordingFormat::Key and others. */
using ProcessInfo = QMap<QString, QString>;

/** One line that the host or the extension logged. */
struct LogLine {
    RecordingFormat::Severity severity = RecordingFormat::Severity::Info;
    QString text;
};

/** How many messages a recording left out for its size limit. */
struct Loss {
    /** Those that carry nothing but a picture. */
    quint64 pictures = 0;
    quint64 others = 0;
};

/** One argument of a message; which member counts is told by the tag. */
struct HookArgument {
    RecordingFormat::ArgumentTag tag = RecordingFormat::ArgumentTag::Integer;
    qint32 integer = 0;
    /** Of Bytes: they themselves; of Variant: its stream form, not read any further. */
    QByteArray bytes;
};

/** One call of the host's hook. */
struct HookMessage {
    qint32 channel = 0;
    QString name;
    QVector<HookArgument> arguments;
};

} // namespace Uicov::Recording
