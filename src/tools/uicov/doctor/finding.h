// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QVector>

namespace Uicov::Doctor {

/** What looking at one thing that recording depends on gave. A value. */
struct Finding {
    enum class Result { Ok, Warning, Problem };

    Result result = Result::Ok;
    /** What was looked at: lower case words joined by hyphens, the same in every version. */
    QString check;
    /** What was seen; no full stop at its end. */
    QString seen;
    /** What to do about it; empty when all is right. */
    QString advice;
};

using Findings = QVector<Finding>;

} // namespace Uicov::Doctor
