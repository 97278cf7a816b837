// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/datafilewriter.h"

#include "recording/recordingreader.h"
#include "store/leftovers.h"
#include "store/partfile.h"

#include <QFileInfo>

namespace Uicov::Store {

using Base::Message;
using Base::Problem;

DataFileWriter::DataFileWriter() = default;
DataFileWriter::~DataFileWriter() = default;

std::optional<Problem> DataFileWriter::checkOutput(const QString& path) {
    const QFileInfo info(path);
    if (info.isDir()) {
        return Problem{Message::OutputNotWritable,
                       path + QStringLiteral(": is a folder; name a file with -o")};
    }
    if (!info.exists()) {
        return std::nullopt;
    }
    if (info.size() > 0 && !DataFile::looksLikeDataFile(path)) {
        const bool isRecording = Recording::RecordingReader::looksLikeRecording(path);
        return Problem{Message::OutputForeign,
                       path +
                           (isRecording ? QStringLiteral(": is a recording and not overwritten")
                                        : QStringLiteral(": is no data file and not overwritten")) +
                           QStringLiteral("; choose another name with -o or remove it")};
    }
    DataFile file;
    if (info.size() == 0) {
        return std::nullopt;
    }
    if (auto problem = file.open(path, Sql::Access::Read)) {
        return Problem{Message::OutputForeign,
                       problem->text + QStringLiteral(" (it is not overwritten)")};
    }
    return std::nullopt;
}

std::optional<Problem> DataFileWriter::open(const QString& path, Mode mode) {
    if (auto problem = checkOutput(path)) {
        return problem;
    }
    m_part = std::make_unique<PartFile>(path);
    auto problem = makePart(path, mode);
    if (problem) {
        m_part.reset();
    }
    return problem;
}

std::optional<Problem> DataFileWriter::makePart(const QString& path, Mode mode) {
    const QFileInfo info(path);
    const bool isThere = info.exists() && info.size() > 0;
    const bool appends = isThere && mode == Mode::Append;
    m_file = std::make_unique<DataFile>();
    if (appends || (isThere && hasJournals(path))) {
        m_original = std::make_unique<DataFile>();
        auto problem = m_original->open(path, Sql::Access::Write);
        problem = problem ? problem : m_original->holdStill();
        if (problem) {
            return problem;
        }
    }
    if (!appends) {
        return m_file->create(m_part->path(), path);
    }
    const auto problem = m_part->copyDataFile();
    return problem ? problem : m_file->open(m_part->path(), Sql::Access::Private, path);
}

std::optional<Problem> DataFileWriter::commit() {
    if (auto problem = m_file->commit()) {
        return problem;
    }
    return m_part->takePlace();
}

} // namespace Uicov::Store
