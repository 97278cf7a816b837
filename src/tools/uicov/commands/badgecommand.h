// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/reportfilecommand.h"

#include <string>

namespace Uicov::Commands {

/** uicov badge: the total as a small picture. */
class BadgeCommand : public Cli::ReportFileCommand {
protected:
    Verb verb() const override;
    void declareMore(CLI::App& app) override;
    QByteArray make(const Coverage::CoverageResult& coverage,
                    const QVector<Coverage::GateResult>& gates) const override;

private:
    std::string m_title = "GUI coverage";
};

} // namespace Uicov::Commands
