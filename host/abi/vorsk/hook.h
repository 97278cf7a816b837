// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vorsk/argumentlist.h>
#include <vorsk/global.h>

QT_BEGIN_NAMESPACE
class QString;
QT_END_NAMESPACE

namespace Vorsk {

/**
 * The way to the test tool: one object for the process, made and owned by the host library.
 *
 * Everything is used on the GUI thread.
 */
class VORSK_HOST_EXPORT Hook {
public:
    /** The one hook; null until the host has made it. */
    static Hook* hook;

    /**
     * Delivers one message. What was handed over is the host's business from then on; the result
     * says whether the host could take it.
     */
    bool send(int channelNumber, const QString& name, const ArgumentList& args);

    /** The number under which the test tool knows this application. */
    int appId() const;

    /** The number that goes with every message as the first argument of send(). */
    int channel = 0;

protected:
    Hook() = default;
    ~Hook() = default;
    Q_DISABLE_COPY(Hook)
};

} // namespace Vorsk
