#pragma once

#include "commands/command.h"

#include <QString>
#include <QStringList>

namespace Uicov::Launch {
class Application;
class ChildProcess;
class RecordingOutput;
} // namespace Uicov::Launch

namespace Uicov::Commands {

/** uicov run: starts an application so that it records itself. */
class RunCommand : public Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    int record(const Launch::Application& application, Console::Terminal& terminal);
    int conclude(const Launch::Application& application, const Launch::ChildProcess& process,
                 const QStringList& recordings, Console::Terminal& terminal) const;
    QString outputPath(const Launch::Application& application) const;

    std::string m_output;
    std::string m_toolkit = "both";
    std::string m_libraryFolder;
    bool m_takesScreenshots = false;
    bool m_isQuiet = false;
    bool m_hasUnknownOption = false;
    std::vector<std::string> m_arguments;
};

} // namespace Uicov::Commands
