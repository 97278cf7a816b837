#pragma once

#include "commands/reportfilecommand.h"

namespace Uicov::Commands {

/** uicov json: the whole report for programs. */
class JsonCommand : public ReportFileCommand {
protected:
    Verb verb() const override;
    QByteArray make(const Report::Coverage& coverage,
                    const QVector<Report::GateResult>& gates) const override;
};

} // namespace Uicov::Commands
