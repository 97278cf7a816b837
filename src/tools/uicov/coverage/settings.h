// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"

#include <QString>
#include <QVector>

#include <optional>

namespace Uicov::Coverage {

/** One value of uicov.toml as it stands there. */
struct Setting {
    /** Section and key, as report.precision; ignore[2] for the second table of a list. */
    QString name;
    /** On one line. */
    QString value;
    int line = 0;
};

/**
 * What stands in the file, line by line.
 * @param settings is given it; left as it is when there is a problem
 * @return the problem that readConfiguration() has with the file as well
 */
std::optional<Base::Problem> readSettings(const QString& path, QVector<Setting>& settings);

} // namespace Uicov::Coverage
