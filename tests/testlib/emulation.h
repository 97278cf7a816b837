// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QtGlobal>

namespace TestLib {

/** Whether an emulator runs the tests, as they are built for another processor. */
inline bool isEmulated() {
    return qEnvironmentVariableIsSet("QEMU_LD_PREFIX");
}

/** Why some of what is preloaded into a program cannot be tested then. */
constexpr char preloadedTwice[] =
    "what is preloaded is preloaded into the emulator too, whose loader complains";

/** For programs that a test starts: the folder, then where the test itself has its plugins from. */
inline QString pluginPath(const QString& folder) {
    const QString own = QString::fromLocal8Bit(qgetenv("QT_PLUGIN_PATH"));
    return own.isEmpty() ? folder : folder + QLatin1Char(':') + own;
}

} // namespace TestLib
