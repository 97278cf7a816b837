// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/dumpcommand.h"

#include "base/jsontext.h"
#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "commands/cli/outputfile.h"
#include "console/progress.h"
#include "console/terminal.h"
#include "dump/messagejson.h"
#include "dump/messageprinter.h"
#include "dump/recordtext.h"
#include "dump/runprinter.h"
#include "recording/recordingreader.h"
#include "run/runloader.h"
#include "store/datafile.h"
#include "store/datafilepath.h"

#include <QFile>
#include <QJsonDocument>

namespace Uicov::Commands {

using Base::Message;
using Cli::Done;
using Cli::Failed;
using Cli::PartialData;
using Cli::setUsage;
using Recording::Ending;

namespace {

constexpr char examples[] =
    R"(A recording gives a line for each message: seconds since the start, what happened, to which
element (#1, #2, ... in the order in which they first appear, with type and text), and the
values. A data file gives lines for each run: what ran, its elements, and what happened to them.
With --format json every line is an object.

Examples:
  uicov dump panel.uirec | grep usageIncreased
  uicov dump panel.uirec | grep '#12 '
  uicov dump --format json | jq -c 'select(.hits[0])')";

QString lineOf(const QJsonObject& object) {
    return QString::fromUtf8(Base::jsonText(QJsonDocument(object), QJsonDocument::Compact)) +
           QLatin1Char('\n');
}

Message messageFor(Ending::Kind kind) {
    switch (kind) {
    case Ending::Kind::Torn:
        return Message::RecordingTorn;
    case Ending::Kind::Damaged:
        return Message::RecordingDamaged;
    case Ending::Kind::Complete:
    case Ending::Kind::NoEndFrame:
        break;
    }
    return Message::EndedAbnormally;
}

} // namespace

CLI::App* DumpCommand::declare(CLI::App& commands) {
    CLI::App* const app = commands.add_subcommand(
        "dump", "Print all that is in recordings and data files, line by line");
    setUsage(*app, "uicov dump [OPTIONS] [FILE...]");
    app->add_option("-o,--output", m_output, "Write to FILE; - is standard output")
        ->type_name("FILE")
        ->capture_default_str();
    app->add_option("--format", m_format, "Lines for people and grep, or objects: text or json")
        ->type_name("NAME")
        ->check(CLI::IsMember({"text", "json"}).description(""))
        ->capture_default_str();
    m_runFilter.declare(*app);
    app->add_flag("--strict", m_isStrict,
                  "End with 3 when a recording or run is partial or damaged");
    app->add_option("FILE", m_files, "Recordings and data files (default: UICOV_FILE, else .uicov)")
        ->type_name("")
        ->expected(0, -1);
    app->footer(examples);
    return app;
}

void DumpCommand::setArguments(const std::vector<std::string>& unread,
                               const std::vector<std::string>* literal) {
    m_files.insert(m_files.end(), unread.begin(), unread.end());
    if (literal != nullptr) {
        m_files.insert(m_files.end(), literal->begin(), literal->end());
    }
}

int DumpCommand::run(Console::Terminal& terminal) {
    QStringList paths;
    for (const std::string& file : m_files) {
        paths.append(QFile::decodeName(file.c_str()));
    }
    if (paths.isEmpty()) {
        paths.append(Store::currentDataFile());
    }
    m_isOneOfSeveral = paths.size() > 1;
    Cli::OutputFile output(QFile::decodeName(m_output.c_str()));
    if (const auto problem = output.open()) {
        terminal.error(*problem);
        return Failed;
    }
    int result = Done;
    bool hasDumped = false;
    for (const QString& path : qAsConst(paths)) {
        const int pathResult = dump(path, output, terminal);
        hasDumped = hasDumped || pathResult != Failed;
        if (pathResult != Done && result != Failed) {
            result = pathResult;
        }
    }
    if (!hasDumped) {
        return Failed; // what stood in the output's place stays
    }
    if (const auto problem = output.close()) {
        terminal.error(*problem);
        return Failed;
    }
    sayNext(paths, terminal);
    return result;
}

/** For people only, as after a report. */
void DumpCommand::sayNext(const QStringList& paths, Console::Terminal& terminal) const {
    if (m_output != "-" || isForTools() || !terminal.isErrorTerminal()) {
        return;
    }
    QString next = QStringLiteral("next: uicov report -m");
    for (const QString& path : paths) {
        const QString argument = Store::dataFileArgument(path);
        next += argument.isEmpty() ? QString() : QLatin1Char(' ') + argument;
    }
    terminal.note(next);
}

int DumpCommand::dump(const QString& path, Cli::OutputFile& output,
                      Console::Terminal& terminal) const {
    return Store::DataFile::looksLikeDataFile(path) ? dumpDataFile(path, output, terminal)
                                                    : dumpRecording(path, output, terminal);
}

bool DumpCommand::isWanted(const QString& recording) const {
    Runs::RunLoader loader(recording);
    return !loader.load() && m_runFilter.matches(loader.run());
}

int DumpCommand::dumpRecording(const QString& path, Cli::OutputFile& output,
                               Console::Terminal& terminal) const {
    Recording::RecordingReader reader(path);
    if (const auto problem = reader.open()) {
        terminal.error(*problem);
        return Failed;
    }
    if (!m_runFilter.isEmpty() && !isWanted(path)) {
        return Done;
    }
    if (isForTools()) {
        output.write(lineOf({{QStringLiteral("recording"), path}}));
    } else if (m_isOneOfSeveral) {
        output.write(QStringLiteral("recording ") + Dump::quoted(path) + QLatin1Char('\n'));
    }
    Dump::MessagePrinter printer;
    Recording::Frame frame;
    while (!output.hasFailed() && reader.next(frame)) {
        output.write(isForTools() ? lineOf(Dump::frameJson(frame))
                                  : printer.print(frame) + QLatin1Char('\n'));
    }
    const Ending& ending = reader.ending();
    if (ending.isComplete() || output.hasFailed()) {
        return Done;
    }
    terminal.warning(
        {messageFor(ending.kind), reader.path() + QStringLiteral(": ") + ending.toString()});
    return m_isStrict ? PartialData : Done;
}

int DumpCommand::dumpDataFile(const QString& path, Cli::OutputFile& output,
                              Console::Terminal& terminal) const {
    Store::DataFile file;
    if (const auto problem = file.open(path, Store::Sql::Access::Read)) {
        terminal.error(*problem);
        return Failed;
    }
    if (isForTools()) {
        output.write(lineOf({{QStringLiteral("dataFile"), path},
                             {QStringLiteral("schema"), Store::DataFile::schemaVersion}}));
    } else if (m_isOneOfSeveral) {
        output.write(QStringLiteral("data file ") + Dump::quoted(path) + QLatin1Char('\n'));
    }
    bool hasPartial = false;
    const QStringList uuids = file.runs();
    Console::Progress progress(terminal, QStringLiteral("printing"), QStringLiteral("runs"),
                               uuids.size());
    for (const QString& uuid : uuids) {
        Runs::Run run;
        if (const auto problem = file.readAttributes(uuid, run)) {
            terminal.error(*problem);
            return Failed;
        }
        progress.advance();
        if (!m_runFilter.matches(run)) {
            continue;
        }
        run = Runs::Run();
        if (const auto problem = file.read(uuid, Store::DataFile::Pictures::Leave, run)) {
            terminal.error(*problem);
            return Failed;
        }
        hasPartial = hasPartial || !run.isComplete;
        if (isForTools()) {
            for (const QJsonObject& object : Dump::runObjects(run)) {
                output.write(lineOf(object));
            }
        } else {
            output.write(Dump::runLines(run).join(QLatin1Char('\n')) + QLatin1Char('\n'));
        }
    }
    return m_isStrict && hasPartial ? PartialData : Done;
}

} // namespace Uicov::Commands
