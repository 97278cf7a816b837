// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/reportfilecommand.h"

namespace Uicov::Commands {

/** uicov junit: the report for pages of test results. */
class JUnitCommand : public Cli::ReportFileCommand {
protected:
    Verb verb() const override;
    QByteArray make(const Coverage::CoverageResult& coverage,
                    const QVector<Coverage::GateResult>& gates) const override;
};

} // namespace Uicov::Commands
