// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace Uicov::Runs {
struct Run;
}

namespace Uicov::Commands::Cli {

/**
 * Which runs of its files a verb reads: --run and --label. Labels of one name, and UUIDs, are
 * alternatives; conditions on different names have to hold together. Owned by the verb's options.
 */
class RunFilter {
public:
    void declare(CLI::App& app);

    bool isEmpty() const { return m_runs.empty() && m_labels.empty(); }
    bool matches(const Runs::Run& run) const;
    /** The options as they were given, for messages. */
    QString toString() const;

    /** Whether the run's UUID starts with that. */
    static bool isCalled(const Runs::Run& run, const QString& start);
    /** @param label NAME for any value, or NAME=VALUE */
    static bool hasLabel(const Runs::Run& run, const QString& label);

private:
    std::vector<std::string> m_runs;
    std::vector<std::string> m_labels;
};

} // namespace Uicov::Commands::Cli
