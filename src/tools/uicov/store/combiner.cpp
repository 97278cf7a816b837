// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/combiner.h"

#include "base/deferredend.h"
#include "run/runloader.h"

#include <algorithm>

namespace Uicov::Store {

using Base::Problem;
using Runs::Run;
using Runs::RunElement;
using Runs::RunLoader;

namespace {

Run withoutPictures(Run run) {
    for (RunElement& element : run.elements) {
        element.picture.clear();
    }
    run.pictures.clear();
    return run;
}

} // namespace

Combiner::Combiner(DataFile& target)
    : m_target(target) {}

std::optional<Problem> Combiner::add(const QString& path) {
    m_warnings.clear();
    return DataFile::looksLikeDataFile(path) ? addDataFile(path) : addRecording(path);
}

std::optional<Problem> Combiner::addRecording(const QString& path) {
    RunLoader loader(path);
    loader.setTakesPictures(m_takesPictures);
    if (auto problem = loader.load()) {
        return problem;
    }
    m_warnings = loader.problems();
    const Run run = loader.run();
    if (!m_filter || m_filter(run)) {
        addRun(run, QByteArray());
    }
    return m_failure;
}

std::optional<Problem> Combiner::addDataFile(const QString& path) {
    DataFile source;
    if (auto problem = source.open(path, Sql::Access::Read)) {
        return problem;
    }
    if (auto problem = source.checkPages()) {
        return problem;
    }
    const int newRuns = m_newRuns;
    const int knownRuns = m_knownRuns;
    m_target.beginPart();
    const QStringList uuids = source.runs();
    std::optional<Problem> problem;
    for (const QString& uuid : uuids) {
        Run run;
        QByteArray digest;
        if (m_filter) {
            problem = source.readAttributes(uuid, run);
            if (problem) {
                break;
            }
            if (!m_filter(run)) {
                continue;
            }
            run = Run();
        }
        problem = source.read(
            uuid, m_takesPictures ? DataFile::Pictures::Load : DataFile::Pictures::Leave, run,
            &digest);
        if (problem || !addRun(run, digest) || Base::DeferredEnd::isRequested()) {
            break;
        }
    }
    if (problem) {
        m_target.dropPart();
        m_newRuns = newRuns;
        m_knownRuns = knownRuns;
        return problem;
    }
    if (!m_failure) {
        m_failure = m_target.keepPart();
    }
    return m_failure;
}

bool Combiner::addRun(const Run& run, const QByteArray& digest) {
    DataFile::Added added = DataFile::Added::New;
    const bool losesPictures =
        !m_takesPictures && std::any_of(run.elements.cbegin(), run.elements.cend(),
                                        [](const RunElement& e) { return !e.picture.isEmpty(); });
    if (losesPictures) {
        // Another form of the run, and so one with a digest of its own.
        m_failure = m_target.add(withoutPictures(run), &added);
    } else {
        m_failure = m_target.add(run, &added, digest);
    }
    ++(added == DataFile::Added::New ? m_newRuns : m_knownRuns);
    return !m_failure;
}

} // namespace Uicov::Store
