// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/markcommand.h"

#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "console/terminal.h"
#include "launch/recordingsetup.h"
#include "recording/markwriter.h"
#include "recording/recordingoutput.h"
#include "store/datafilepath.h"

#include <QFile>

#include <cstdlib>

namespace Uicov::Commands {

using Base::Message;
using Cli::Done;
using Cli::Failed;
using Cli::setUsage;
using Launch::RunFolder;

namespace {

constexpr char examples[] =
    R"(All that the application sends before the mark belongs to the context before, all that it
sends after it to NAME. The run is the one that was started with the same data file, from any
folder the one that this command was started by.

Examples:
  uicov mark test_login
  uicov mark -o nightly.uicov "settings: language"
  uicov mark --end)";

} // namespace

CLI::App* MarkCommand::declare(CLI::App& commands) {
    CLI::App* const app =
        commands.add_subcommand("mark", "Begin a context, as a test, in a run that is going");
    setUsage(*app, "uicov mark [OPTIONS] NAME");
    app->add_option("-o,--output", m_output,
                    "The data file of the run (default: UICOV_FILE, else .uicov)")
        ->type_name("FILE");
    app->add_flag("--end", m_endsContext, "End the context; only that of the run goes on");
    app->add_option("NAME", m_names, "The context, as the name of a test")
        ->type_name("")
        ->expected(0, 1);
    app->footer(examples);
    return app;
}

void MarkCommand::setArguments(const std::vector<std::string>& unread,
                               const std::vector<std::string>* literal) {
    m_names.insert(m_names.end(), unread.begin(), unread.end());
    if (literal != nullptr) {
        m_names.insert(m_names.end(), literal->begin(), literal->end());
    }
}

int MarkCommand::run(Console::Terminal& terminal) {
    const std::size_t expected = m_endsContext ? 0 : 1;
    if (m_names.size() != expected || (expected == 1 && m_names.front().empty())) {
        terminal.error({Message::WrongUse, QStringLiteral("mark takes one name, or --end; see "
                                                          "uicov mark --help")});
        return Failed;
    }
    const auto run = findRun(terminal);
    if (!run) {
        return Failed;
    }
    const QString name = m_endsContext ? QString() : QString::fromStdString(m_names.front());
    // Processes first that are still to start, so that none begins unmarked in between.
    const bool isSet = Launch::RecordingSetup::setMark(run->optionsFile, name);
    const QStringList recordings =
        Recording::RecordingOutput(run->recording).recordingsOf(run->session);
    int marked = 0;
    for (const QString& recording : recordings) {
        marked += Recording::appendMark(recording, name) ? 1 : 0;
    }
    if (isSet) { // between two processes of a run there may be none to mark
        sayNext(terminal);
        return Done;
    }
    terminal.error(
        marked == 0
            ? Base::Problem{Message::NoRunGoing,
                            QStringLiteral("the run has ended in this moment; nothing is "
                                           "marked")}
            : Base::Problem{Message::SetupFailed,
                            run->optionsFile +
                                QStringLiteral(": cannot be written: what runs is marked, but "
                                               "processes that start later will not be; free "
                                               "some space there")});
    return Failed;
}

/** For people only: a test driver marks before each test. */
void MarkCommand::sayNext(Console::Terminal& terminal) const {
    if (!terminal.isErrorTerminal()) {
        return;
    }
    if (m_endsContext) {
        terminal.note(QStringLiteral("next: uicov mark NAME, or end the application"));
        return;
    }
    const QString output =
        m_output.empty()
            ? QString()
            : QStringLiteral(" -o ") + Store::shellQuoted(QString::fromStdString(m_output));
    terminal.note(QStringLiteral("next: uicov mark") + output + QStringLiteral(" --end"));
}

std::optional<RunFolder::Info> MarkCommand::findRun(Console::Terminal& terminal) const {
    const char* const variable = std::getenv("UICOV_RUN");
    if (variable != nullptr && m_output.empty()) {
        if (auto run = RunFolder::running(QFile::decodeName(variable))) {
            return run;
        }
    }
    const QString dataFile =
        m_output.empty() ? Store::currentDataFile() : Store::dataFilePath(m_output);
    const QStringList folders = RunFolder::foldersOf(dataFile, true);
    if (folders.size() > 1) {
        terminal.error({Message::NoRunGoing,
                        QStringLiteral("%1 runs with the data file %2 are going, and which one is "
                                       "meant is not known; give each a data file of its own "
                                       "with -o, and combine them later")
                            .arg(folders.size())
                            .arg(dataFile)});
        return std::nullopt;
    }
    auto run = folders.isEmpty() ? std::nullopt : RunFolder::running(folders.first());
    if (!run) {
        terminal.error({Message::NoRunGoing,
                        QStringLiteral("no run with the data file ") + dataFile +
                            QStringLiteral(" is going; start one with uicov run, and name its "
                                           "data file with -o")});
    }
    return run;
}

} // namespace Uicov::Commands
