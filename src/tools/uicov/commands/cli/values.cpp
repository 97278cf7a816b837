// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/cli/values.h"

#include <QString>

namespace Uicov::Commands::Cli {

namespace {

CLI::Validator validator(const QString& what, const std::function<bool(const QString&)>& accepts) {
    return CLI::Validator(
        [what, accepts](const std::string& value) {
            const QString text = QString::fromLocal8Bit(value.c_str());
            return accepts(text) ? std::string()
                                 : QStringLiteral("takes %1, not %2").arg(what, text).toStdString();
        },
        std::string());
}

} // namespace

CLI::Validator wholeNumber(int lowest, int highest) {
    return validator(QStringLiteral("a whole number from %1 to %2").arg(lowest).arg(highest),
                     [lowest, highest](const QString& text) {
                         bool isNumber = false;
                         const int value = text.toInt(&isNumber);
                         return isNumber && value >= lowest && value <= highest;
                     });
}

CLI::Validator number(double lowest, double highest) {
    const bool isOpen = highest < lowest;
    return validator(isOpen ? QStringLiteral("a number that is at least %1").arg(lowest)
                            : QStringLiteral("a number from %1 to %2").arg(lowest).arg(highest),
                     [lowest, highest, isOpen](const QString& text) {
                         bool isNumber = false;
                         const double value = text.toDouble(&isNumber);
                         return isNumber && value >= lowest && (isOpen || value <= highest);
                     });
}

} // namespace Uicov::Commands::Cli
