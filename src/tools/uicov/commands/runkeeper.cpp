// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/runkeeper.h"

#include "console/progress.h"
#include "console/terminal.h"
#include "run/runloader.h"

#include <QFileInfo>
#include <QStorageInfo>

#include <sys/resource.h>

namespace Uicov::Commands {

using Base::Message;
using Base::Problem;
using Mode = Store::DataFileWriter::Mode;

namespace {

/** What most likely kept the recording from going on, as the end of a sentence. */
QString causeOfCut(const QString& recording) {
    constexpr qint64 tooLittle = 1024 * 1024;
    const QString folder = QFileInfo(recording).absolutePath();
    rlimit limit{};
    if (::getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY) {
        return QStringLiteral("files may not become larger than %1 bytes; raise the limit with "
                              "ulimit -f")
            .arg(limit.rlim_cur);
    }
    if (QStorageInfo(folder).bytesAvailable() < tooLittle) {
        return QStringLiteral("the disk of %1 is full; free some space, or record elsewhere with "
                              "--recording")
            .arg(folder);
    }
    return QStringLiteral("the application, or a sandbox that it is in, closed or cut the file, or "
                          "it ended in a way that tells nobody; its own messages may say more");
}

Problem cutOff(const QString& recording) {
    return {Message::EndedAbnormally,
            recording +
                QStringLiteral(": the recording ended before the application did, so that "
                               "what it did later is missing: ") +
                causeOfCut(recording)};
}

} // namespace

RunKeeper::RunKeeper(const QString& dataFile, bool appends, Console::Terminal& terminal)
    : m_dataFile(dataFile)
    , m_mode(appends ? Mode::Append : Mode::Replace)
    , m_terminal(terminal) {}

std::optional<Problem> RunKeeper::keep(const QStringList& recordings) {
    std::optional<Problem> problem;
    {
        Console::Progress progress(m_terminal, QStringLiteral("keeping"),
                                   QStringLiteral("recordings"), recordings.size());
        for (int i = 0; i < recordings.size() && !problem; ++i) {
            problem = keepOne(recordings.at(i), i == 0);
            progress.advance();
        }
    }
    if (!problem && m_writer) {
        problem = m_writer->commit();
    }
    m_writer.reset();
    m_lock.release();
    return problem;
}

std::optional<Problem> RunKeeper::keepOne(const QString& recording, bool isOfApplication) {
    Runs::RunLoader loader(recording);
    loader.setTakesPictures(true);
    if (const auto problem = loader.load()) {
        m_terminal.warning({Message::RecordingUnreadable, problem->text});
        m_isPartial = true;
        return std::nullopt;
    }
    const QVector<Problem> problems = loader.problems();
    for (const Problem& problem : problems) {
        const bool isCutOff =
            isOfApplication && m_hasEndedByItself && problem.message == Message::EndedAbnormally;
        m_terminal.warning(isCutOff ? cutOff(recording) : problem);
        m_isPartial = true;
    }
    const Runs::Run run = loader.run();
    if (m_firstWarning.isEmpty() && !run.warnings.isEmpty()) {
        m_firstWarning = run.warnings.firstKey();
    }
    if (run.messages == 0) {
        return std::nullopt;
    }
    ++m_runs;
    m_elements += static_cast<qint64>(run.elements.size());
    m_records += run.messages;
    auto problem = m_writer ? std::nullopt : begin();
    return problem ? problem : m_writer->file().add(run);
}

std::optional<Problem> RunKeeper::begin() {
    if (auto problem =
            m_lock.acquire(m_dataFile, [this](const QString& text) { m_terminal.note(text); })) {
        return problem;
    }
    m_writer.emplace();
    return m_writer->open(m_dataFile, m_mode);
}

} // namespace Uicov::Commands
