#pragma once

#include "commands/reportfilecommand.h"

namespace Uicov::Commands {

/** uicov junit: the report for pages of test results. */
class JUnitCommand : public ReportFileCommand {
protected:
    Verb verb() const override;
    QByteArray make(const Report::Coverage& coverage,
                    const QVector<Report::GateResult>& gates) const override;
};

} // namespace Uicov::Commands
