// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/runkeeper.h"

#include "console/progress.h"
#include "console/terminal.h"
#include "run/runloader.h"

namespace Uicov::Commands {

using Base::Message;
using Base::Problem;
using Mode = Store::DataFileWriter::Mode;

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
            problem = keepOne(recordings.at(i));
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

std::optional<Problem> RunKeeper::keepOne(const QString& recording) {
    Runs::RunLoader loader(recording);
    loader.setTakesPictures(true);
    if (const auto problem = loader.load()) {
        m_terminal.warning({Message::RecordingUnreadable, problem->text});
        return std::nullopt;
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
