#pragma once

#include "commands/reportfilecommand.h"

#include <string>

namespace Uicov::Commands {

/** uicov badge: the total as a small picture. */
class BadgeCommand : public ReportFileCommand {
protected:
    Verb verb() const override;
    void declareMore(CLI::App& app) override;
    QByteArray make(const Report::Coverage& coverage,
                    const QVector<Report::GateResult>& gates) const override;

private:
    std::string m_title = "GUI coverage";
};

} // namespace Uicov::Commands
