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
        RunLoader loader(path);
        loader.setTakesPictures(m_takesPictures);
        problem = loader.load();
        if (!problem) {
            warn(loader.problems(), terminal);
            m_run = loader.run();
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
    Console::Progress progress(terminal, QStringLiteral("reading"), QStringLiteral("files"),
                               paths.size());
    for (const QString& path : paths) {
        progress.advance();
        if (const auto problem = combiner.add(path)) {
            if (combiner.failure()) {
                terminal.error(inTemporaryFolder(*problem));
                return false;
            }
            terminal.error(*problem);
            ++m_skippedFiles;
            continue;
        }
        m_hasReadAny = true;
        warn(combiner.warnings(), terminal);
    }
    if (auto problem = m_file->commit()) {
        terminal.error(inTemporaryFolder(*problem));
        return false;
    }
    return true;
}

void Inputs::warn(const QVector<Problem>& problems, Console::Terminal& terminal) {
    for (const Problem& problem : problems) {
        terminal.warning(problem);
    }
}

bool Inputs::forEach(const std::function<void(const Run&)>& visitor,
                     Console::Terminal& terminal) const {
    if (m_run) {
        visitor(*m_run);
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
        if (const auto problem = m_file->read(uuid, pictures, run)) {
            terminal.error(*problem);
            return false;
        }
        visitor(run);
    }
    return true;
}

} // namespace Uicov::Commands::Cli
