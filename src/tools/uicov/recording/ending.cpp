// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "recording/ending.h"

namespace Uicov::Recording {

QString Ending::toString() const {
    const QString lost = lostBytes == 1 ? QStringLiteral("1 byte is lost")
                                        : QStringLiteral("%1 bytes are lost").arg(lostBytes);
    switch (kind) {
    case Kind::Complete:
        return QStringLiteral("ended in order");
    case Kind::NoEndFrame:
        return QStringLiteral(
            "ended abnormally: the application was killed, crashed or still runs");
    case Kind::Torn:
        return QStringLiteral("is torn after %1 bytes: %2").arg(soundBytes).arg(lost);
    case Kind::Damaged:
        return QStringLiteral("is damaged at byte %1: %2").arg(soundBytes).arg(lost);
    }
    return {};
}

} // namespace Uicov::Recording
