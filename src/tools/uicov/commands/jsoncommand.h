// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/reportfilecommand.h"

namespace Uicov::Commands {

/** uicov json: the whole report for programs. */
class JsonCommand : public Cli::ReportFileCommand {
protected:
    Verb verb() const override;
    QByteArray make(const Coverage::CoverageResult& coverage,
                    const QVector<Coverage::GateResult>& gates) const override;
};

} // namespace Uicov::Commands
