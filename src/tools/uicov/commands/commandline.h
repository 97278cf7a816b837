#pragma once

#include <memory>
#include <string>
#include <vector>

namespace Uicov::Console {
class Terminal;
}

namespace Uicov::Commands {

class Command;

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

private:
    Console::Terminal& m_terminal;
    std::vector<std::unique_ptr<Command>> m_commands;
};

} // namespace Uicov::Commands
