// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMap>
#include <QString>

namespace Uicov::Runs {
struct Run;
}

namespace Uicov::Coverage {

/**
 * What a person could operate in the run and the classic extension does not watch: Qt's own classes
 * of controls, each with how many were shown. What classes of the application extend, a recording
 * does not tell. Empty for runs of the controls extension.
 */
QMap<QString, int> unwatchedControls(const Runs::Run& run);

} // namespace Uicov::Coverage
