#include "commands/dumpcommand.h"

#include "commands/exitcode.h"
#include "commands/helpformatter.h"
#include "console/outputfile.h"
#include "console/terminal.h"
#include "recording/recordingreader.h"
#include "report/messageprinter.h"

#include <QFile>

namespace Uicov::Commands {

using Console::Message;
using Recording::Ending;

namespace {

constexpr char examples[] =
    R"(Each line: seconds since the start, what happened, to which element (#1, #2, ... in the
order in which they first appear, with type and text), and the values.

Examples:
  uicov dump panel.uirec | grep usageIncreased
  uicov dump panel.uirec | grep '#12 ')";

} // namespace

CLI::App* DumpCommand::declare(CLI::App& commands) {
    CLI::App* const app =
        commands.add_subcommand("dump", "Print every message of a recording as one line");
    setUsage(*app, "uicov dump [OPTIONS] FILE");
    app->add_option("-o,--output", m_output, "Write to FILE; - is standard output")
        ->type_name("FILE")
        ->capture_default_str();
    app->add_flag("--strict", m_isStrict,
                  "End with 3 when the recording ended abnormally or is damaged");
    app->add_option("FILE", m_files, "The recording")->type_name("")->expected(0, 1);
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
    if (m_files.size() != 1) {
        terminal.error(
            {Message::WrongUse, QStringLiteral("dump takes one recording; see uicov dump "
                                               "--help")});
        return Failed;
    }
    Recording::RecordingReader reader(QFile::decodeName(m_files.front().c_str()));
    if (const auto problem = reader.open()) {
        terminal.error(*problem);
        return Failed;
    }
    Console::OutputFile output(QFile::decodeName(m_output.c_str()));
    if (const auto problem = output.open()) {
        terminal.error(*problem);
        return Failed;
    }
    Report::MessagePrinter printer;
    Recording::Frame frame;
    while (!output.hasFailed() && reader.next(frame)) {
        output.write(printer.print(frame) + QLatin1Char('\n'));
    }
    if (const auto problem = output.close()) {
        terminal.error(*problem);
        return Failed;
    }
    const Ending& ending = reader.ending();
    if (ending.isComplete()) {
        return Done;
    }
    const Message message = ending.kind == Ending::Kind::Torn      ? Message::RecordingTorn
                            : ending.kind == Ending::Kind::Damaged ? Message::RecordingDamaged
                                                                   : Message::EndedAbnormally;
    terminal.warning({message, reader.path() + QStringLiteral(": ") + ending.toString()});
    return m_isStrict ? PartialData : Done;
}

} // namespace Uicov::Commands
