// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"
#include "commands/cli/command.h"
#include "launch/installation.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace Uicov::Launch {
class Application;
class ChildProcess;
class RecordingSetup;
class RunFolder;
} // namespace Uicov::Launch

namespace Uicov::Recording {
class RecordingOutput;
}

namespace Uicov::Commands {

class RunKeeper;

/** uicov run: starts an application so that it records itself, and keeps what it recorded. */
class RunCommand : public Cli::Command {
public:
    CLI::App* declare(CLI::App& commands) override;
    void setArguments(const std::vector<std::string>& unread,
                      const std::vector<std::string>* literal) override;
    int run(Console::Terminal& terminal) override;

private:
    int record(Launch::Application& application, Console::Terminal& terminal);
    std::optional<Base::Problem> checkOptions() const;
    /** Takes what uicov.toml says of recording. */
    std::optional<Base::Problem> readConfiguration();
    Launch::Installation installation() const;
    QString recordingPath(const Launch::Application& application,
                          const Launch::RunFolder& folder) const;
    void configure(Launch::RecordingSetup& setup) const;
    int conclude(Launch::Application& application, const Launch::ChildProcess& process,
                 const QStringList& recordings, Launch::RunFolder& folder,
                 Console::Terminal& terminal) const;
    /** Why there is no recording at all, as the end of a sentence. */
    QString causeOfSilence(Launch::Application& application, int signal,
                           const Recording::RecordingOutput& output) const;
    /** How to take in later what could not be kept now. */
    static QString adviceToKeep(const Base::Problem& problem, const QString& dataFile,
                                const QString& recordings);
    /** Why there is nothing in the recording. */
    static QString causeOfEmptiness(const RunKeeper& keeper);
    static void tell(const RunKeeper& keeper, const Launch::ChildProcess& process,
                     const QString& dataFile, Console::Terminal& terminal);

    std::string m_output;
    bool m_appends = false;
    std::vector<std::string> m_labels;
    std::string m_context;
    bool m_keepsRecording = false;
    std::string m_recording;
    std::string m_toolkit = "both";
    std::string m_libraryFolder;
    bool m_isClassic = false;
    std::string m_configFile;
    bool m_ignoresConfig = false;
    QStringList m_redacted;
    bool m_takesScreenshots = false;
    bool m_isStrict = false;
    bool m_isQuiet = false;
    bool m_hasUnknownOption = false;
    std::vector<std::string> m_arguments;
};

} // namespace Uicov::Commands
