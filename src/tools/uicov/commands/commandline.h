// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace Uicov::Commands::Cli {
class Command;
}

namespace Uicov::Console {
class Terminal;
}

namespace Uicov::Commands {

/** The command line as a whole: knows the verbs, reads the arguments and runs the verb named. */
class CommandLine {
public:
    explicit CommandLine(Console::Terminal& terminal);
    ~CommandLine();

    /**
     * @param arguments without the program's own name, as they came
     * @return the exit code of the process
     */
    int run(const std::vector<std::string>& arguments);

    /** All verbs with their options, which write into this object; never null. */
    std::unique_ptr<CLI::App> definitions();

private:
    void beginGroup(const char* name);
    QStringList verbNames() const;

    struct Group {
        std::size_t firstCommand;
        std::string name;
    };

    Console::Terminal& m_terminal;
    std::string m_colour = "auto";
    std::vector<std::unique_ptr<Cli::Command>> m_commands;
    std::vector<Group> m_groups;
    /** As in m_commands. */
    std::vector<CLI::App*> m_verbs;
};

} // namespace Uicov::Commands
