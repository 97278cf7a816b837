// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QtGlobal>

namespace Uicov::Recording {

/** How a recording ended, as far as it could be read. */
struct Ending {
    enum class Kind {
        Complete,   ///< the End frame is the last one
        NoEndFrame, ///< whole frames only, but no End frame: the application was killed or crashed
        Torn,       ///< the file ends inside a frame
        Damaged     ///< a frame is not what was written
    };

    Kind kind = Kind::NoEndFrame;
    /** Bytes from the start of the file that could be used. */
    qint64 soundBytes = 0;
    /** Bytes behind them that could not. */
    qint64 lostBytes = 0;

    bool isComplete() const { return kind == Kind::Complete; }
    /** Half a sentence for people: "ended in order", "is torn after 120 bytes, 7 bytes are lost".
     */
    QString toString() const;
};

} // namespace Uicov::Recording
