#pragma once

#include "commands/command.h"
#include "commands/coverageoptions.h"

namespace Uicov::Report {
class Comparison;
}

namespace Uicov::Commands {

/** uicov diff: what two data files or recordings differ in. */
class DiffCommand : public Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    void sayNext(const Report::Comparison& comparison, Console::Terminal& terminal) const;

    CoverageOptions m_options;
    std::string m_output = "-";
    std::string m_format = "text";
    int m_precision = -1;
    std::vector<std::string> m_failOn;
};

} // namespace Uicov::Commands
