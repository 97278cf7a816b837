#include "commands/runcommand.h"

#include "commands/exitcode.h"
#include "commands/helpformatter.h"
#include "console/terminal.h"
#include "launch/application.h"
#include "launch/childprocess.h"
#include "launch/installation.h"
#include "launch/recordingoutput.h"
#include "launch/recordingsetup.h"
#include "store/runloader.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUuid>

#include <cerrno>
#include <cstring>

namespace Uicov::Commands {

using Console::Message;
using Console::Problem;
using Launch::RecordingSetup;
using Store::RunLoader;

namespace {

constexpr char examples[] =
    R"(The application is not changed, and its screen, keyboard, standard streams, signals and exit
status stay its own. Every Qt program that it starts in turn gets a recording beside FILE,
with its process id in the name.

Examples:
  uicov run -- ./panel --demo
  uicov run -o monday.uirec --screenshots -- ./panel
  uicov run -- ctest -R gui)";

RecordingSetup::Toolkit toolkitOf(const std::string& name) {
    if (name == "widgets") {
        return RecordingSetup::Toolkit::Widgets;
    }
    return name == "quick" ? RecordingSetup::Toolkit::Quick : RecordingSetup::Toolkit::Both;
}

/** As it can be pasted into a shell. */
QString shellQuoted(const QString& text) {
    static const QRegularExpression harmless(QStringLiteral("^[A-Za-z0-9_./,:=@%+-]+$"));
    if (harmless.match(text).hasMatch()) {
        return text;
    }
    QString quoted = text;
    return QLatin1Char('\'') + quoted.replace(QLatin1Char('\''), QLatin1String("'\\''")) +
           QLatin1Char('\'');
}

struct Summary {
    qint64 records = 0;
    std::size_t elements = 0;
    QString firstWarning;
    QVector<Problem> problems;
};

Summary summaryOf(const QStringList& recordings) {
    Summary summary;
    for (const QString& path : recordings) {
        RunLoader loader(path);
        if (auto problem = loader.load()) {
            summary.problems.append(*problem);
            continue;
        }
        const Store::Run run = loader.run();
        summary.records += run.messages;
        summary.elements += run.elements.size();
        if (summary.firstWarning.isEmpty() && !run.warnings.isEmpty()) {
            summary.firstWarning = run.warnings.firstKey();
        }
    }
    return summary;
}

} // namespace

CLI::App* RunCommand::declare(CLI::App& commands) {
    CLI::App* const app =
        commands.add_subcommand("run", "Run an application and record what is used of it");
    setUsage(*app, "uicov run [OPTIONS] -- APP [ARGS...]");
    app->add_option("-o,--output", m_output,
                    "The recording (default: the name of APP with .uirec, here)")
        ->type_name("FILE");
    app->add_option("--toolkit", m_toolkit, "What to record: widgets, quick or both")
        ->type_name("NAME")
        ->envname("UICOV_TOOLKIT")
        ->check(CLI::IsMember({"widgets", "quick", "both"}).description(""))
        ->capture_default_str();
    app->add_flag("--screenshots", m_takesScreenshots, "Record a picture of every element")
        ->envname("UICOV_SCREENSHOTS");
    app->add_option("--libdir", m_libraryFolder, "Where the extension is, if not beside uicov")
        ->type_name("DIR")
        ->envname("UICOV_LIBDIR");
    app->add_flag("-q,--quiet", m_isQuiet, "Print nothing but errors");
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
    const Launch::Installation installation(QFile::decodeName(m_libraryFolder.c_str()));
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

QString RunCommand::outputPath(const Launch::Application& application) const {
    return m_output.empty() ? application.name() + QStringLiteral(".uirec")
                            : QFile::decodeName(m_output.c_str());
}

int RunCommand::record(const Launch::Application& application, Console::Terminal& terminal) {
    const Launch::Installation installation(QFile::decodeName(m_libraryFolder.c_str()));
    const Launch::RecordingOutput output(outputPath(application));
    if (const auto problem = output.check()) {
        terminal.error(*problem);
        return Failed;
    }
    constexpr int uuidLength = 36;
    const QString session = QUuid::createUuid().toString().mid(1, uuidLength);
    RecordingSetup setup(session);
    setup.setToolkit(toolkitOf(m_toolkit));
    setup.setTakesScreenshots(m_takesScreenshots);
    if (const auto problem = setup.write(installation, output.absolutePath())) {
        terminal.error(*problem);
        return Failed;
    }
    if (const auto problem = output.makeRoom()) {
        terminal.error(*problem);
        return Failed;
    }
    Launch::ChildProcess process;
    if (!process.run(QFile::encodeName(application.path()).toStdString(), m_arguments,
                     setup.environment(installation))) {
        constexpr int notExecutable = 126;
        constexpr int notFound = 127;
        terminal.error({Message::ApplicationNotStarted,
                        application.path() + QStringLiteral(": cannot be started: ") +
                            QString::fromLocal8Bit(std::strerror(process.error())) +
                            QStringLiteral("; see that it starts without uicov")});
        return process.error() == ENOENT ? notFound : notExecutable;
    }
    return conclude(application, process, output.recordingsOf(session), terminal);
}

int RunCommand::conclude(const Launch::Application& application,
                         const Launch::ChildProcess& process, const QStringList& recordings,
                         Console::Terminal& terminal) const {
    const Summary summary = summaryOf(recordings);
    for (const Problem& problem : summary.problems) {
        terminal.warning({Message::RecordingUnreadable, problem.text});
    }
    if (summary.records == 0) {
        QString cause = application.causeOfSilence(process.signal());
        if (!recordings.isEmpty()) {
            cause = summary.firstWarning.isEmpty()
                        ? QStringLiteral("it showed no window, or none of the chosen toolkit; see "
                                         "--toolkit")
                        : QStringLiteral("the first warning was: ") + summary.firstWarning;
        }
        terminal.error({Message::NothingRecorded,
                        application.name() + QStringLiteral(" recorded nothing: ") + cause});
        return process.exitCode() == 0 ? Failed : process.exitCode();
    }
    if (!m_isQuiet) {
        terminal.note(
            QStringLiteral("recorded %1 elements in %2 messages")
                .arg(summary.elements)
                .arg(summary.records) +
            (process.signal() != 0
                 ? QStringLiteral("; the application was ended by signal %1").arg(process.signal())
                 : QString()));
        QStringList quoted;
        for (const QString& path : recordings) {
            quoted.append(shellQuoted(path));
        }
        terminal.note(QStringLiteral("next: uicov report -m ") + quoted.join(QLatin1Char(' ')));
    }
    return process.exitCode();
}

} // namespace Uicov::Commands
