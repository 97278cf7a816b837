// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/badgecommand.h"

#include "commands/cli/helpformatter.h"
#include "report/badge.h"

namespace Uicov::Commands {

namespace {

constexpr char examples[] =
    R"(The picture stands for itself: no network, no font but those that are there.

Examples:
  uicov badge -o gui-coverage.svg
  uicov badge --title "panel GUI" --precision 1 -o panel.svg)";

} // namespace

BadgeCommand::Verb BadgeCommand::verb() const {
    return {"badge", "Write the total as a small SVG picture", examples};
}

void BadgeCommand::declareMore(CLI::App& app) {
    app.add_option("--title", m_title, "What stands before the number")
        ->type_name("TEXT")
        ->capture_default_str();
}

QByteArray BadgeCommand::make(const Coverage::CoverageResult& coverage,
                              const QVector<Coverage::GateResult>& /*gates*/) const {
    return Report::badgeSvg(QString::fromStdString(m_title), coverage.tree().totals(), precision());
}

} // namespace Uicov::Commands
