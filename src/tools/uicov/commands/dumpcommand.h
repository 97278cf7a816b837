#pragma once

#include "commands/command.h"

#include <QString>

namespace Uicov::Commands {

/** uicov dump: every message of one recording as one line. */
class DumpCommand : public Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    std::vector<std::string> m_files;
    std::string m_output = "-";
    bool m_isStrict = false;
};

} // namespace Uicov::Commands
