// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/global.h>

#include <QLoggingCategory>

namespace VorskHost {

/** "vorsk.host": what went wrong in the host itself. Shown on the application's stderr. */
VORSK_HOST_EXPORT const QLoggingCategory& hostLog();

/**
 * Reports what went wrong in the host, to hostLog(), as one line whatever is in it: control
 * characters, as a path can have them, come out as \\xNN.
 */
VORSK_HOST_EXPORT void reportProblem(const QString& line);

/**
 * "vorsk.extension": what the extension logs. Off unless QT_LOGGING_RULES turns it on: the lines
 * are in the recording anyway, and there are many of them.
 */
VORSK_HOST_EXPORT const QLoggingCategory& extensionLog();

} // namespace VorskHost
