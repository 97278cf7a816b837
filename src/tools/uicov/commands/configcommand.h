// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "commands/cli/command.h"
#include "coverage/settings.h"

#include <QString>
#include <QVector>

#include <string>
#include <vector>

namespace Uicov::Commands {

/** uicov config: every setting that holds here, and where its value comes from. */
class ConfigCommand : public Cli::Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    struct Row {
        QString setting;
        QString value;
        QString source;
    };

    /** The file that is read; empty for none. */
    QString configurationFile() const;
    /** What can be set by a variable, in the order of the options. */
    QVector<Row> optionRows(const QVector<Coverage::Setting>& settings, const QString& file) const;

    /** All verbs; theirs who parsed, and there while this runs. */
    CLI::App* m_app = nullptr;
    std::string m_configFile;
    bool m_ignoresConfig = false;
    bool m_hasMore = false;
};

} // namespace Uicov::Commands
