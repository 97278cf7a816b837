// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/cli/runfilter.h"

#include "run/run.h"
#include "store/datafilepath.h"

#include <QMap>
#include <QStringList>

#include <algorithm>

#include <CLI/CLI.hpp>

namespace Uicov::Commands::Cli {

void RunFilter::declare(CLI::App& app) {
    app.add_option("--run", m_runs, "Read only runs whose UUID starts with this")
        ->type_name("UUID")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    app.add_option("--label", m_labels, "Read only runs with this label")
        ->type_name("NAME[=VALUE]")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
}

bool RunFilter::matches(const Runs::Run& run) const {
    const bool isMeant =
        m_runs.empty() || std::any_of(m_runs.cbegin(), m_runs.cend(), [&](const std::string& uuid) {
            return isCalled(run, QString::fromStdString(uuid));
        });
    QMap<QString, bool> names;
    for (const std::string& option : m_labels) {
        const QString label = QString::fromStdString(option);
        bool& isFound = names[label.section(QLatin1Char('='), 0, 0)];
        isFound = isFound || hasLabel(run, label);
    }
    return isMeant &&
           std::all_of(names.cbegin(), names.cend(), [](bool isFound) { return isFound; });
}

QString RunFilter::toString() const {
    QStringList words;
    for (const std::string& uuid : m_runs) {
        words.append(QStringLiteral("--run ") + Store::shellQuoted(QString::fromStdString(uuid)));
    }
    for (const std::string& label : m_labels) {
        words.append(QStringLiteral("--label ") +
                     Store::shellQuoted(QString::fromStdString(label)));
    }
    return words.join(QLatin1Char(' '));
}

bool RunFilter::isCalled(const Runs::Run& run, const QString& start) {
    return run.uuid.startsWith(start, Qt::CaseInsensitive);
}

bool RunFilter::hasLabel(const Runs::Run& run, const QString& label) {
    const auto found = run.labels.constFind(label.section(QLatin1Char('='), 0, 0));
    return found != run.labels.cend() &&
           (!label.contains(QLatin1Char('=')) || *found == label.section(QLatin1Char('='), 1));
}

} // namespace Uicov::Commands::Cli
