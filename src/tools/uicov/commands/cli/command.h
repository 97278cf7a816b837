// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace Uicov::Console {
class Terminal;
}

namespace Uicov::Commands::Cli {

/** One verb: declares its options once, then runs with what was given. Owned by CommandLine. */
class Command {
public:
    Command() = default;
    virtual ~Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    /** Adds the verb with its options, which write into this object when they are parsed. */
    virtual CLI::App* declare(CLI::App& commands) = 0;

    /**
     * Called before run().
     * @param unread what the verb's declaration left over
     * @param literal what stands behind the first "--", which is never read as an option; null when
     *                there is no "--"
     */
    virtual void setArguments(const std::vector<std::string>& unread,
                              const std::vector<std::string>* literal) = 0;

    /** @return the exit code of the process */
    virtual int run(Console::Terminal& terminal) = 0;
};

} // namespace Uicov::Commands::Cli
