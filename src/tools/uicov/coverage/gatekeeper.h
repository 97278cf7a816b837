// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/configuration.h"
#include "coverage/indices.h"

#include <QString>
#include <QVector>

// Judges coverage by gates.
namespace Uicov::Coverage {

class CoverageResult;

/** One condition that was asked for, and whether it holds. */
struct GateResult {
    /** What was asked for, as on the command line. */
    QString name;
    /** What is, as a sentence that can stand behind a colon. */
    QString finding;
    bool isMet = false;
    /** The window that it is about; None for all together. */
    WindowId window;
};

/** One result for each condition, and for each window that a condition is about. */
QVector<GateResult> judgeGates(const CoverageResult& coverage, const Gates& gates, int digits);

} // namespace Uicov::Coverage
