// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/runcommand.h"

#include "base/deferredend.h"
#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "commands/runkeeper.h"
#include "console/terminal.h"
#include "coverage/configuration.h"
#include "coverage/configurationfile.h"
#include "doctor/diagnosis.h"
#include "launch/application.h"
#include "launch/childprocess.h"
#include "launch/installation.h"
#include "launch/recordingsetup.h"
#include "launch/revision.h"
#include "launch/runfolder.h"
#include "launch/unfinishedruns.h"
#include "recording/recordingoutput.h"
#include "store/datafilepath.h"
#include "store/datafilewriter.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUuid>

#include <cerrno>
#include <cstring>

namespace Uicov::Commands {

using Base::Message;
using Base::Problem;
using Cli::Failed;
using Cli::PartialData;
using Cli::setUsage;
using Launch::RecordingSetup;

namespace {

constexpr char examples[] =
    R"(The application is not changed, and its screen, keyboard, standard streams, signals and exit
status stay its own. Every Qt program that it starts in turn is a run of its own in the same
data file.

Examples:
  uicov run -- ./panel --demo
  uicov run --append --label branch=main --context smoke -- ./panel
  uicov run -o shard-%p.uicov --screenshots -- ctest -R gui)";

RecordingSetup::Toolkit toolkitOf(const std::string& name) {
    if (name == "widgets") {
        return RecordingSetup::Toolkit::Widgets;
    }
    return name == "quick" ? RecordingSetup::Toolkit::Quick : RecordingSetup::Toolkit::Both;
}

/** What to type to name the recordings: their folder where it is the run's own. */
QString asArguments(const QStringList& recordings, const QString& runFolder) {
    const bool areInFolder =
        QFileInfo(recordings.value(0)).absolutePath() == QFileInfo(runFolder).absoluteFilePath();
    QString arguments;
    for (const QString& path : areInFolder ? QStringList{runFolder} : recordings) {
        arguments += QLatin1Char(' ') + Store::shellQuoted(path);
    }
    return arguments;
}

bool isLabel(const std::string& text) {
    const std::size_t separator = text.find('=');
    return separator != std::string::npos && separator > 0;
}

} // namespace

CLI::App* RunCommand::declare(CLI::App& commands) {
    CLI::App* const app =
        commands.add_subcommand("run", "Run an application and record what is used of it");
    setUsage(*app, "uicov run [OPTIONS] -- APP [ARGS...]");
    app->add_option("-o,--output", m_output,
                    "The data file; %p: process, %h: host (default: .uicov)")
        ->type_name("FILE")
        ->envname("UICOV_FILE");
    app->add_flag("-a,--append", m_appends, "Keep the runs that are in the data file already");
    app->add_option("--label", m_labels, "Call the run by NAME=VALUE; may be given several times")
        ->type_name("NAME=VALUE")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    app->add_option("--context", m_context, "Name what the run as a whole is, as a suite of tests")
        ->type_name("NAME")
        ->envname("UICOV_CONTEXT");
    app->add_option("--toolkit", m_toolkit, "What to record: widgets, quick or both")
        ->type_name("NAME")
        ->envname("UICOV_TOOLKIT")
        ->check(CLI::IsMember({"widgets", "quick", "both"}).description(""))
        ->capture_default_str();
    app->add_flag("--classic", m_isClassic, "Record with the older extension, which knows less")
        ->envname("UICOV_CLASSIC");
    app->add_flag("--screenshots", m_takesScreenshots, "Record a picture of every view")
        ->envname("UICOV_SCREENSHOTS");
    app->add_flag("--keep-recording", m_keepsRecording,
                  "Keep the recording, under the name of APP with .uirec");
    app->add_option("--recording", m_recording, "Keep the recording under this name")
        ->type_name("FILE");
    app->add_option("--libdir", m_libraryFolder, "Where the extension is, if not beside uicov")
        ->type_name("DIR")
        ->envname("UICOV_LIBDIR");
    app->add_option("--config", m_configFile,
                    "What to black out (default: uicov.toml, if it is here)")
        ->type_name("FILE")
        ->envname("UICOV_CONFIG");
    app->add_flag("--no-config", m_ignoresConfig, "Read no uicov.toml");
    app->add_flag("--strict", m_isStrict,
                  "End with 3 instead of 0 when something that was sent is missing");
    app->add_flag("-q,--quiet", m_isQuiet, "Print nothing but errors and warnings");
    app->prefix_command();
    app->footer(examples);
    return app;
}

void RunCommand::setArguments(const std::vector<std::string>& unread,
                              const std::vector<std::string>* literal) {
    m_arguments = unread;
    m_hasUnknownOption = !unread.empty() && unread.front().compare(0, 1, "-") == 0;
    if (literal != nullptr) {
        if (!unread.empty()) {
            m_arguments.emplace_back("--"); // behind the application's name it is the application's
        }
        m_arguments.insert(m_arguments.end(), literal->begin(), literal->end());
    }
}

int RunCommand::run(Console::Terminal& terminal) {
    terminal.setShowsProgress(!m_isQuiet);
    if (m_arguments.empty()) {
        terminal.error({Message::WrongUse, QStringLiteral("run takes the application to start; see "
                                                          "uicov run --help")});
        return Failed;
    }
    const QString command = QFile::decodeName(m_arguments.front().c_str());
    if (m_hasUnknownOption) {
        terminal.error({Message::WrongUse, QStringLiteral("run knows no option ") + command +
                                               QStringLiteral("; see uicov run --help, or put -- "
                                                              "before the application")});
        return Failed;
    }
    const Launch::Installation installation = this->installation();
    Launch::Application application(command);
    // A wrong name is the commonest mistake by far, so it is told before anything else.
    const auto applicationProblem = application.check(installation.extension());
    if (applicationProblem && application.exitCode() != Failed) {
        terminal.error(*applicationProblem);
        return application.exitCode();
    }
    if (const auto problem = installation.problem()) {
        terminal.error(*problem);
        return Failed;
    }
    if (applicationProblem) {
        terminal.error(*applicationProblem);
        return Failed;
    }
    return record(application, terminal);
}

Launch::Installation RunCommand::installation() const {
    return Launch::Installation(QFile::decodeName(m_libraryFolder.c_str()),
                                m_isClassic ? Launch::Extension::Classic
                                            : Launch::Extension::Controls);
}

std::optional<Problem> RunCommand::readConfiguration() {
    const QString path = m_configFile.empty() ? Coverage::defaultConfigurationFile()
                                              : QFile::decodeName(m_configFile.c_str());
    if (m_ignoresConfig || (m_configFile.empty() && !QFile::exists(path))) {
        return std::nullopt;
    }
    Coverage::Configuration configuration;
    auto problem = Coverage::readConfiguration(path, configuration);
    m_redacted = configuration.redacted;
    return problem;
}

std::optional<Problem> RunCommand::checkOptions() const {
    const QString output = Store::dataFilePath(m_output);
    if (output.endsWith(QLatin1String(".uirec"))) {
        return Problem{Message::WrongUse,
                       QStringLiteral("-o names the data file, and %1 looks like a recording; to "
                                      "keep the recording use --recording %1")
                           .arg(output)};
    }
    for (const std::string& label : m_labels) {
        if (!isLabel(label)) {
            return Problem{Message::WrongUse, QStringLiteral("--label takes NAME=VALUE, not ") +
                                                  QString::fromStdString(label) +
                                                  QStringLiteral("; see uicov run --help")};
        }
    }
    return Store::DataFileWriter::checkOutput(output);
}

/** Where the recording goes: what the user wants to keep, else the run's folder. */
QString RunCommand::recordingPath(const Launch::Application& application,
                                  const Launch::RunFolder& folder) const {
    if (!m_recording.empty()) {
        return QFile::decodeName(m_recording.c_str());
    }
    const QString name = application.name() + QStringLiteral(".uirec");
    return m_keepsRecording ? name : folder.path() + QLatin1Char('/') + name;
}

int RunCommand::record(Launch::Application& application, Console::Terminal& terminal) {
    const auto fail = [&terminal](const Problem& problem) {
        terminal.error(problem);
        return static_cast<int>(Failed);
    };
    if (const auto problem = checkOptions()) {
        return fail(*problem);
    }
    if (const auto problem = readConfiguration()) {
        return fail(*problem);
    }
    // From here on there is something to take away again, and then something to keep.
    Base::DeferredEnd untilKept;
    constexpr int uuidLength = 36;
    const QString session = QUuid::createUuid().toString().mid(1, uuidLength);
    Launch::RunFolder folder;
    if (const auto problem = folder.create(Store::dataFilePath(m_output), session)) {
        return fail(*problem);
    }
    const Launch::Installation installation = this->installation();
    const Recording::RecordingOutput output(recordingPath(application, folder));
    if (const auto problem = output.check()) {
        return fail(*problem);
    }
    RecordingSetup setup(session);
    configure(setup);
    if (const auto problem = setup.write(installation, output.absolutePath())) {
        return fail(*problem);
    }
    if (const auto problem = folder.announce({folder.path(), session, output.absolutePath(),
                                              setup.configurationFile(), m_appends})) {
        return fail(*problem);
    }
    if (const auto problem = output.makeRoom()) {
        return fail(*problem);
    }
    if (Base::DeferredEnd::isRequested()) {
        return Failed; // the signal that waits ends the process
    }
    Launch::ChildProcess process;
    process.setSignalMask(untilKept.maskBefore());
    untilKept.keep();
    if (!process.run(QFile::encodeName(application.path()).toStdString(), m_arguments,
                     setup.environment(installation, folder.path()))) {
        constexpr int notExecutable = 126;
        constexpr int notFound = 127;
        fail({Message::ApplicationNotStarted,
              application.path() + QStringLiteral(": cannot be started: ") +
                  QString::fromLocal8Bit(std::strerror(process.error())) +
                  QStringLiteral("; see that it starts without uicov")});
        return process.error() == ENOENT ? notFound : notExecutable;
    }
    return conclude(application, process, output.recordingsOf(session), folder, terminal);
}

void RunCommand::configure(RecordingSetup& setup) const {
    setup.setToolkit(toolkitOf(m_toolkit));
    setup.setTakesScreenshots(m_takesScreenshots);
    setup.setRedacted(m_redacted);
    setup.setContext(QString::fromStdString(m_context));
    QStringList labels;
    for (const std::string& label : m_labels) {
        labels.append(QString::fromStdString(label));
    }
    const QStringList ofRevision = Launch::Revision::ofWorkingFolder().toLabels();
    for (int i = ofRevision.size() - 1; i >= 0; --i) {
        const QString start = ofRevision.at(i).section(QLatin1Char('='), 0, 0) + QLatin1Char('=');
        if (labels.filter(QRegularExpression(QLatin1Char('^') + QRegularExpression::escape(start)))
                .isEmpty()) {
            labels.prepend(ofRevision.at(i));
        }
    }
    setup.setLabels(labels);
}

QString RunCommand::causeOfSilence(Launch::Application& application, int signal,
                                   const Recording::RecordingOutput& output) const {
    // Before all else: an application that could not be recorded at all has the same recordings.
    if (output.hasLostItsFolder()) {
        return QStringLiteral("the folder %1, which its recording was to stand in, was removed "
                              "during the run; let the run leave that folder alone, or record "
                              "elsewhere with --recording")
            .arg(QFileInfo(output.absolutePath()).absolutePath());
    }
    if (output.isThere()) {
        return QStringLiteral("its recording %1 is there, but was cut short or overwritten during "
                              "the run, so that nothing in it can be used; let the run leave that "
                              "file alone, or record elsewhere with --recording")
            .arg(output.absolutePath());
    }
    const Launch::Installation installation = this->installation();
    const QStringList causes = Doctor::Diagnosis(installation, Store::dataFilePath(m_output))
                                   .likelyCauses(application, signal);
    return causes.first() + (causes.size() > 1 ? QStringLiteral("; next: uicov doctor ") +
                                                     Store::shellQuoted(application.path())
                                               : QString());
}

QString RunCommand::causeOfEmptiness(const RunKeeper& keeper) {
    return keeper.firstWarning().isEmpty()
               ? QStringLiteral("it showed no window, or none of the chosen toolkit; see --toolkit")
               : QStringLiteral("the first warning was: ") + keeper.firstWarning();
}

int RunCommand::conclude(Launch::Application& application, const Launch::ChildProcess& process,
                         const QStringList& recordings, Launch::RunFolder& folder,
                         Console::Terminal& terminal) const {
    const QString dataFile = Store::dataFilePath(m_output);
    RunKeeper keeper(dataFile, m_appends, terminal);
    keeper.setEndedByItself(process.signal() == 0);
    if (const auto problem = keeper.keep(recordings)) {
        terminal.error(*problem);
        folder.keep();
        terminal.note(adviceToKeep(*problem, dataFile, asArguments(recordings, folder.path())));
        return process.exitCode() == 0 ? Failed : process.exitCode();
    }
    if (keeper.records() == 0) {
        terminal.error(
            {Message::NothingRecorded,
             application.name() + QStringLiteral(" recorded nothing: ") +
                 (recordings.isEmpty() ? causeOfSilence(application, process.signal(),
                                                        Recording::RecordingOutput(
                                                            recordingPath(application, folder)))
                                       : causeOfEmptiness(keeper))});
        return process.exitCode() == 0 ? Failed : process.exitCode();
    }
    if (!m_isQuiet) {
        tell(keeper, process, dataFile, terminal);
    }
    return process.exitCode() == 0 && m_isStrict && keeper.isPartial() ? PartialData
                                                                       : process.exitCode();
}

QString RunCommand::adviceToKeep(const Problem& problem, const QString& dataFile,
                                 const QString& recordings) {
    const QString start = QStringLiteral("what was recorded is kept; next: ");
    if (problem.message == Message::OutputForeign) {
        return start + QStringLiteral("uicov combine -o ") +
               Store::shellQuoted(dataFile + QStringLiteral("-kept")) + recordings;
    }
    const QString command = QStringLiteral("uicov combine -a -o ");
    return problem.message == Message::OutputNotWritable
               ? start + QStringLiteral("when that is cured, or with a name on another disk: ") +
                     command + Store::shellQuoted(dataFile) + recordings
               : start + command + Store::shellQuoted(dataFile) + recordings;
}

void RunCommand::tell(const RunKeeper& keeper, const Launch::ChildProcess& process,
                      const QString& dataFile, Console::Terminal& terminal) {
    const QString signal =
        process.signal() != 0
            ? QStringLiteral("; the application was ended by signal %1").arg(process.signal())
            : QString();
    const QString processes =
        keeper.runs() > 1 ? QStringLiteral(" of %1 processes").arg(keeper.runs()) : QString();
    terminal.note(QStringLiteral("recorded %1 elements%2 in %3 messages%4")
                      .arg(keeper.elements())
                      .arg(processes)
                      .arg(keeper.records())
                      .arg(signal));
    const QStringList left = Launch::unfinishedRuns(dataFile);
    for (const QString& path : left) {
        terminal.note(QStringLiteral("an earlier run could not be finished; add what it recorded "
                                     "with: ") +
                      Launch::adviceForUnfinished(dataFile, path));
    }
    terminal.note(
        (QStringLiteral("next: uicov report -m ") + Store::dataFileArgument(dataFile)).trimmed());
}

} // namespace Uicov::Commands
