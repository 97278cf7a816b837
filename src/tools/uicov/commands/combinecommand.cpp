// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/combinecommand.h"

#include "base/deferredend.h"
#include "commands/cli/exitcode.h"
#include "commands/cli/helpformatter.h"
#include "console/progress.h"
#include "console/terminal.h"
#include "launch/unfinishedruns.h"
#include "recording/recordingreader.h"
#include "store/combiner.h"
#include "store/datafilepath.h"
#include "store/datafilewriter.h"
#include "store/filelock.h"
#include "store/partfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Uicov::Commands {

using Base::Message;
using Cli::Done;
using Cli::Failed;
using Cli::PartialData;
using Cli::setUsage;
using Store::DataFile;
using Store::DataFileWriter;

namespace {

constexpr char examples[] =
    R"(A run is in the result once, however many files hold it and however often they are combined.
A folder stands for all data files and recordings in it. The files are only read; one that
cannot be used is named and left out.

Examples:
  uicov combine shard-1.uicov shard-2.uicov
  uicov combine -o nightly.uicov results/
  uicov combine --append monday.uirec)";

/** All in the folder that is a data file or a recording, by name. */
QStringList filesIn(const QString& folder) {
    QStringList paths;
    const QFileInfoList files =
        QDir(folder).entryInfoList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& file : files) {
        const QString path = QDir(folder).filePath(file.fileName());
        if (!Store::PartFile::isName(file.fileName()) &&
            (DataFile::looksLikeDataFile(path) ||
             Recording::RecordingReader::looksLikeRecording(path))) {
            paths.append(path);
        }
    }
    return paths;
}

QString counted(int count, const char* one, const char* several) {
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : several));
}

} // namespace

CLI::App* CombineCommand::declare(CLI::App& commands) {
    CLI::App* const app =
        commands.add_subcommand("combine", "Put the runs of many files into one data file");
    setUsage(*app, "uicov combine [OPTIONS] FILE...");
    app->add_option("-o,--output", m_output, "The data file to write (default: .uicov)")
        ->type_name("FILE")
        ->envname("UICOV_FILE");
    app->add_flag("-a,--append", m_appends, "Keep the runs that are in it already");
    m_runFilter.declare(*app);
    app->add_flag("--no-pictures", m_leavesPicturesOut, "Leave pictures out");
    app->add_flag("--strict", m_isStrict, "End with 3 when a file is damaged or left out");
    app->add_flag("-q,--quiet", m_isQuiet, "Print nothing but errors and warnings");
    app->add_option("FILE", m_files, "Data files, recordings and folders with them")
        ->type_name("")
        ->expected(0, -1);
    app->footer(examples);
    return app;
}

void CombineCommand::setArguments(const std::vector<std::string>& unread,
                                  const std::vector<std::string>* literal) {
    m_files.insert(m_files.end(), unread.begin(), unread.end());
    if (literal != nullptr) {
        m_files.insert(m_files.end(), literal->begin(), literal->end());
    }
}

int CombineCommand::run(Console::Terminal& terminal) {
    terminal.setShowsProgress(!m_isQuiet);
    if (m_files.empty()) {
        terminal.error({Message::WrongUse,
                        QStringLiteral("combine takes data files, recordings or folders with "
                                       "them; see uicov combine --help")});
        return Failed;
    }
    const QString output = Store::dataFilePath(m_output);
    const QStringList paths = inputs(output, terminal);
    if (paths.isEmpty()) {
        return Failed;
    }
    return combine(paths, output, terminal);
}

QStringList CombineCommand::inputs(const QString& output, Console::Terminal& terminal) {
    QStringList paths;
    for (const std::string& file : m_files) {
        const QString path = QFile::decodeName(file.c_str());
        if (!QFileInfo(path).isDir()) {
            paths.append(path);
            continue;
        }
        const QStringList found = filesIn(path);
        if (found.isEmpty()) {
            terminal.error({Message::InputMissing,
                            path + QStringLiteral(": there is no data file and no recording in "
                                                  "this folder; check the path")});
            ++m_skippedFiles;
        }
        paths.append(found);
    }
    if (m_appends && QFileInfo::exists(output)) {
        paths.removeAll(output); // its runs are in it
    }
    return paths;
}

int CombineCommand::combine(const QStringList& paths, const QString& output,
                            Console::Terminal& terminal) {
    Store::FileLock lock;
    if (const auto problem =
            lock.acquire(output, [&terminal](const QString& text) { terminal.note(text); })) {
        terminal.error(*problem);
        return Failed;
    }
    DataFileWriter writer;
    if (const auto problem = writer.open(output, m_appends ? DataFileWriter::Mode::Append
                                                           : DataFileWriter::Mode::Replace)) {
        terminal.error(*problem);
        return Failed;
    }
    Store::Combiner combiner(writer.file());
    combiner.setTakesPictures(!m_leavesPicturesOut);
    if (!m_runFilter.isEmpty()) {
        combiner.setFilter([this](const Runs::Run& run) { return m_runFilter.matches(run); });
    }
    if (!addAll(paths, combiner, terminal) || Base::DeferredEnd::isRequested()) {
        return Failed; // a signal that waits ends the process when the lock is released
    }
    if (m_usedFiles == 0) {
        return Failed; // each file has been told of; nothing is written
    }
    if (!m_runFilter.isEmpty() && combiner.newRuns() + combiner.knownRuns() == 0) {
        terminal.error({Message::NoSuchRun,
                        QStringLiteral("no run is like ") + m_runFilter.toString() +
                            QStringLiteral("; nothing is written, see uicov dump for the runs "
                                           "that there are")});
        return Failed;
    }
    const int runs = writer.file().runs().size();
    if (const auto problem = writer.commit()) {
        terminal.error(*problem);
        return Failed;
    }
    if (!m_isQuiet) {
        terminal.note(QStringLiteral("%1 now holds %2: %3 added, %4 known already, from %5")
                          .arg(output, counted(runs, "run", "runs"))
                          .arg(combiner.newRuns())
                          .arg(combiner.knownRuns())
                          .arg(counted(m_usedFiles, "file", "files")));
        tellOfUnfinished(output, terminal);
        terminal.note(
            (QStringLiteral("next: uicov report -m ") + Store::dataFileArgument(output)).trimmed());
    }
    if (m_isStrict && m_skippedFiles + m_damagedFiles > 0) {
        return PartialData;
    }
    return m_skippedFiles > 0 ? Failed : Done;
}

void CombineCommand::tellOfUnfinished(const QString& output, Console::Terminal& terminal) const {
    QStringList given;
    for (const std::string& file : m_files) {
        given.append(QFileInfo(QFile::decodeName(file.c_str())).absoluteFilePath());
    }
    const QStringList left = Launch::unfinishedRuns(output);
    for (const QString& folder : left) {
        const bool isGiven =
            m_skippedFiles == 0 && given.contains(QFileInfo(folder).absoluteFilePath());
        terminal.note(
            isGiven ? folder + QStringLiteral(" is not needed any more; next: rm -r ") +
                          Store::shellQuoted(folder)
                    : QStringLiteral("an earlier run could not be finished; add what it recorded "
                                     "with: ") +
                          Launch::adviceForUnfinished(output, folder));
    }
}

bool CombineCommand::addAll(const QStringList& paths, Store::Combiner& combiner,
                            Console::Terminal& terminal) {
    Console::Progress progress(terminal, QStringLiteral("combining"), QStringLiteral("files"),
                               paths.size());
    for (const QString& path : paths) {
        if (Base::DeferredEnd::isRequested()) {
            break;
        }
        const auto problem = combiner.add(path);
        progress.advance();
        if (combiner.failure()) {
            terminal.error(*combiner.failure());
            return false;
        }
        if (problem) {
            terminal.error(*problem);
            ++m_skippedFiles;
            continue;
        }
        ++m_usedFiles;
        for (const Base::Problem& warning : combiner.warnings()) {
            terminal.warning(warning);
        }
        m_damagedFiles += combiner.warnings().isEmpty() ? 0 : 1;
    }
    return true;
}

} // namespace Uicov::Commands
