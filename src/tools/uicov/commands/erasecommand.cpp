// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/erasecommand.h"

#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "commands/cli/runfilter.h"
#include "console/terminal.h"
#include "store/datafilepath.h"
#include "store/datafilewriter.h"
#include "store/filelock.h"
#include "store/leftovers.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace Uicov::Commands {

using Base::Message;
using Cli::Done;
using Cli::Failed;
using Cli::setUsage;
using Runs::Run;
using Store::DataFileWriter;

namespace {

constexpr char examples[] =
    R"(Without --run and --label the whole data file goes. Recordings are never erased.

Examples:
  uicov erase
  uicov erase nightly.uicov
  uicov erase --label branch=old --run 3f2c)";

/** Whether the run was asked for; several conditions of one kind are alternatives. */
bool isMeant(const Run& run, const QStringList& uuids, const QStringList& labels) {
    const auto isCalled = [&run](const QString& start) {
        return Cli::RunFilter::isCalled(run, start);
    };
    const auto hasLabel = [&run](const QString& label) {
        return Cli::RunFilter::hasLabel(run, label);
    };
    return std::any_of(uuids.cbegin(), uuids.cend(), isCalled) ||
           std::any_of(labels.cbegin(), labels.cend(), hasLabel);
}

/** Names the command that fills the data file anew. */
QString nextRun(const QString& path) {
    const QString argument = Store::dataFileArgument(path);
    return QStringLiteral("next: uicov run ") +
           (argument.isEmpty() ? QString() : QStringLiteral("-o ") + argument + QLatin1Char(' ')) +
           QStringLiteral("-- APP");
}

QStringList textsOf(const std::vector<std::string>& values) {
    QStringList texts;
    for (const std::string& value : values) {
        texts.append(QString::fromStdString(value));
    }
    return texts;
}

} // namespace

CLI::App* EraseCommand::declare(CLI::App& commands) {
    CLI::App* const app =
        commands.add_subcommand("erase", "Take the data file away, or single runs out of it");
    setUsage(*app, "uicov erase [OPTIONS] [FILE]");
    app->add_option("--run", m_runs, "Only runs whose UUID starts with this")
        ->type_name("UUID")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    app->add_option("--label", m_labels, "Only runs with this label")
        ->type_name("NAME[=VALUE]")
        ->expected(1)
        ->take_all()
        ->allow_extra_args(false);
    app->add_flag("-q,--quiet", m_isQuiet, "Print nothing but errors");
    app->add_option("FILE", m_files, "The data file (default: UICOV_FILE, else .uicov)")
        ->type_name("")
        ->expected(0, 1);
    app->footer(examples);
    return app;
}

void EraseCommand::setArguments(const std::vector<std::string>& unread,
                                const std::vector<std::string>* literal) {
    m_files.insert(m_files.end(), unread.begin(), unread.end());
    if (literal != nullptr) {
        m_files.insert(m_files.end(), literal->begin(), literal->end());
    }
}

int EraseCommand::run(Console::Terminal& terminal) {
    terminal.setShowsProgress(!m_isQuiet);
    if (m_files.size() > 1) {
        terminal.error({Message::WrongUse, QStringLiteral("erase takes one data file at a time; "
                                                          "see uicov erase --help")});
        return Failed;
    }
    const QString path =
        m_files.empty() ? Store::currentDataFile() : QFile::decodeName(m_files.front().c_str());
    if (!QFileInfo::exists(path)) {
        terminal.error({Message::InputMissing,
                        path + QStringLiteral(": there is no such file; nothing is erased")});
        return Failed;
    }
    Store::FileLock lock;
    if (const auto problem =
            lock.acquire(path, [&terminal](const QString& text) { terminal.note(text); })) {
        terminal.error(*problem);
        return Failed;
    }
    return m_runs.empty() && m_labels.empty() ? eraseFile(path, terminal)
                                              : eraseRuns(path, terminal);
}

int EraseCommand::eraseFile(const QString& path, Console::Terminal& terminal) const {
    if (const auto problem = DataFileWriter::checkOutput(path)) {
        terminal.error({problem->message, path + QStringLiteral(": is no data file that can be "
                                                                "read and not erased; remove it "
                                                                "yourself")});
        return Failed;
    }
    QFile file(path);
    // What SQLite left beside it would be applied to the next file of that name.
    Store::removeJournals(path);
    if (!file.remove()) {
        terminal.error({Message::OutputNotWritable, path + QStringLiteral(": cannot be removed: ") +
                                                        file.errorString() +
                                                        QStringLiteral("; check the folder's "
                                                                       "mode")});
        return Failed;
    }
    if (!m_isQuiet) {
        terminal.note(path + QStringLiteral(" is erased"));
        terminal.note(nextRun(path));
    }
    return Done;
}

int EraseCommand::eraseRuns(const QString& path, Console::Terminal& terminal) const {
    DataFileWriter writer;
    auto problem = writer.open(path, DataFileWriter::Mode::Append);
    int erased = 0;
    const QStringList uuids = problem ? QStringList() : writer.file().runs();
    for (const QString& uuid : uuids) {
        Run run;
        problem = writer.file().readAttributes(uuid, run);
        if (!problem && isMeant(run, textsOf(m_runs), textsOf(m_labels))) {
            problem = writer.file().erase(uuid);
            ++erased;
        }
        if (problem) {
            break;
        }
    }
    if (!problem && erased > 0) {
        problem = writer.commit();
    }
    if (problem) {
        terminal.error(*problem);
        return Failed;
    }
    if (erased == 0) {
        terminal.error({Message::NoSuchRun,
                        path + QStringLiteral(": no run in it is meant; nothing is erased, see "
                                              "uicov dump for what is in it")});
        return Failed;
    }
    if (!m_isQuiet) {
        terminal.note(
            QStringLiteral("%1 of %2 runs erased from %3").arg(erased).arg(uuids.size()).arg(path));
        terminal.note(erased == uuids.size() ? nextRun(path)
                                             : (QStringLiteral("next: uicov report -m ") +
                                                Store::dataFileArgument(path))
                                                   .trimmed());
    }
    return Done;
}

} // namespace Uicov::Commands
