// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/cli/inputs.h"

#include "console/progress.h"
#include "console/terminal.h"
#include "run/runloader.h"
#include "store/combiner.h"
#include "store/datafile.h"

#include <QDir>
#include <QTemporaryDir>

namespace Uicov::Commands::Cli {

using Base::Message;
using Base::Problem;
using Runs::Run;
using Runs::RunLoader;
using Store::Combiner;
using Store::DataFile;
using Store::Sql;

namespace {

Problem inTemporaryFolder(const Problem& problem) {
    return {Message::SetupFailed,
            QStringLiteral("the inputs cannot be put together in the temporary folder: ") +
                problem.text + QStringLiteral("; TMPDIR names another")};
}

} // namespace

Inputs::Inputs() = default;
Inputs::~Inputs() = default;

bool Inputs::add(const QStringList& paths, Console::Terminal& terminal) {
    const bool isAdded =
        paths.size() == 1 ? addOnly(paths.first(), terminal) : addSeveral(paths, terminal);
    return isAdded && m_hasReadAny;
}

/** One file needs no place of its own for its runs. */
bool Inputs::addOnly(const QString& path, Console::Terminal& terminal) {
    std::optional<Problem> problem;
    if (DataFile::looksLikeDataFile(path)) {
        m_file = std::make_unique<DataFile>();
        problem = m_file->open(path, Sql::Access::Read);
    } else {
        Run run;
        problem = load(path, run, terminal);
        if (!problem) {
            m_run = run;
        }
    }
    if (problem) {
        m_file.reset();
        terminal.error(*problem);
        ++m_skippedFiles;
        return false;
    }
    m_hasReadAny = true;
    return true;
}

/** Open, but without a name, so that it goes with the process however that ends. */
std::optional<Problem> Inputs::createPlace() {
    const QTemporaryDir folder;
    auto problem = m_file->create(folder.filePath(QStringLiteral("inputs")), QDir::tempPath());
    return problem ? inTemporaryFolder(*problem) : problem;
}

bool Inputs::addSeveral(const QStringList& paths, Console::Terminal& terminal) {
    m_file = std::make_unique<DataFile>();
    if (auto problem = createPlace()) {
        terminal.error(*problem);
        return false;
    }
    Combiner combiner(*m_file);
    combiner.setTakesPictures(m_takesPictures);
    combiner.setFilter(m_filter);
    Console::Progress progress(terminal, QStringLiteral("reading"), QStringLiteral("files"),
                               paths.size());
    for (const QString& path : paths) {
        progress.advance();
        const auto problem = m_going.contains(path) ? addGoing(path, terminal) : combiner.add(path);
        if (problem) {
            if (combiner.failure()) {
                terminal.error(inTemporaryFolder(*problem));
                return false;
            }
            terminal.error(*problem);
            ++m_skippedFiles;
            continue;
        }
        m_hasReadAny = true;
        if (!m_going.contains(path)) {
            warn(combiner.warnings(), terminal);
        }
    }
    if (auto problem = m_file->commit()) {
        terminal.error(inTemporaryFolder(*problem));
        return false;
    }
    return true;
}

std::optional<Problem> Inputs::load(const QString& recording, Run& run,
                                    Console::Terminal& terminal) const {
    RunLoader loader(recording);
    loader.setTakesPictures(m_takesPictures);
    if (auto problem = loader.load()) {
        return problem;
    }
    run = loader.run();
    if (!m_going.contains(recording)) {
        warn(loader.problems(), terminal);
    } else if (!loader.ending().isComplete()) {
        run.partialReason = QStringLiteral("is still going");
    }
    return std::nullopt;
}

std::optional<Problem> Inputs::addGoing(const QString& recording, Console::Terminal& terminal) {
    Run run;
    auto problem = load(recording, run, terminal);
    return problem || (m_filter && !m_filter(run)) ? problem : m_file->add(run);
}

void Inputs::warn(const QVector<Problem>& problems, Console::Terminal& terminal) {
    for (const Problem& problem : problems) {
        terminal.warning(problem);
    }
}

bool Inputs::forEach(const std::function<void(const Run&)>& visitor,
                     Console::Terminal& terminal) const {
    if (m_run) {
        if (!m_filter || m_filter(*m_run)) {
            visitor(*m_run);
        }
        return true;
    }
    if (!m_file) {
        return true;
    }
    const auto pictures = m_takesPictures ? DataFile::Pictures::Load : DataFile::Pictures::Leave;
    const QStringList uuids = m_file->runs();
    Console::Progress progress(terminal, QStringLiteral("reading"), QStringLiteral("runs"),
                               uuids.size());
    for (const QString& uuid : uuids) {
        progress.advance();
        Run run;
        auto problem = m_filter ? m_file->readAttributes(uuid, run) : std::nullopt;
        if (!problem && m_filter && !m_filter(run)) {
            continue;
        }
        run = Run();
        problem = problem ? problem : m_file->read(uuid, pictures, run);
        if (problem) {
            terminal.error(*problem);
            return false;
        }
        visitor(run);
    }
    return true;
}

} // namespace Uicov::Commands::Cli
