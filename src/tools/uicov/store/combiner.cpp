// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "store/combiner.h"

#include "base/deferredend.h"
#include "run/runloader.h"
#include "store/runrank.h"

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

/** What was saved of a damaged file, and what was not. */
Problem savedFrom(const Problem& damage, const QStringList& lost, int found) {
    constexpr int mostNamed = 3;
    constexpr int idLength = 8;
    QStringList names;
    for (const QString& uuid : lost.mid(0, mostNamed)) {
        names.append(uuid.left(idLength));
    }
    QString text = damage.text + QStringLiteral(" (%1 of the %2 runs found in it are used")
                                     .arg(found - lost.size())
                                     .arg(found);
    if (!lost.isEmpty()) {
        text +=
            QStringLiteral("; left out: ") + names.join(QStringLiteral(", ")) +
            (lost.size() > mostNamed ? QStringLiteral(" and %1 more").arg(lost.size() - mostNamed)
                                     : QString());
    }
    return {damage.message, text + QLatin1Char(')')};
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
    auto damage = source.open(path, Sql::Access::Read);
    if (!damage) {
        damage = source.checkPages();
    }
    if (damage && damage->message != Base::Message::DataFileDamaged) {
        return damage;
    }
    if (damage) {
        DataFile remains;
        remains.setToleratesDamage(true);
        if (remains.open(path, Sql::Access::Read)) {
            return damage;
        }
        return addRuns(remains, remains.runsThatCanBeFound(), damage);
    }
    return addRuns(source, source.runs(), damage);
}

/** Each run by itself, so that one that cannot be read is all that is lost. */
std::optional<Problem> Combiner::addRuns(DataFile& source, const QStringList& uuids,
                                         std::optional<Problem> damage) {
    m_target.beginPart();
    QStringList lost;
    for (const QString& uuid : uuids) {
        Run run;
        QByteArray digest;
        bool isWanted = true;
        auto problem = m_filter ? source.readAttributes(uuid, run) : std::nullopt;
        if (!problem && m_filter) {
            isWanted = m_filter(run);
            run = Run();
        }
        if (!isWanted) {
            continue;
        }
        if (!problem) {
            problem = source.read(
                uuid, m_takesPictures ? DataFile::Pictures::Load : DataFile::Pictures::Leave, run,
                &digest);
        }
        if (!problem && !RunRank::isAsWritten(run, digest)) {
            problem = Problem{Base::Message::DataFileDamaged,
                              source.path() + QStringLiteral(": the run in it was changed after it "
                                                             "was recorded")};
        }
        if (problem) {
            source.recover();
            lost.append(uuid);
            damage = damage ? damage : problem;
        } else if (!addRun(run, digest) || Base::DeferredEnd::isRequested()) {
            break;
        }
    }
    if (damage && lost.size() == uuids.size()) {
        m_target.dropPart();
        return damage;
    }
    if (damage) {
        m_warnings.append(savedFrom(*damage, lost, uuids.size()));
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
