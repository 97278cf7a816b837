// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "commands/basefinder.h"

#include "console/terminal.h"
#include "launch/revision.h"
#include "store/datafile.h"

#include <QDateTime>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace Uicov::Commands {

using Base::Message;
using Base::Problem;
using Launch::Revision;
using Runs::Run;
using Store::DataFile;

namespace {

/** The base and those before it that tell what is flapping. */
constexpr std::size_t mostCandidates = 5;
/** Digits of a hash that people read. */
constexpr int shortHash = 10;

QString counted(qint64 count, const QString& noun) {
    return QStringLiteral("%1 %2%3").arg(count).arg(noun,
                                                    count == 1 ? QString() : QStringLiteral("s"));
}

/** In the largest unit of which there are two. */
QString durationText(qint64 seconds) {
    constexpr qint64 minute = 60;
    constexpr qint64 hour = 60 * minute;
    constexpr qint64 day = 24 * hour;
    if (seconds < minute) {
        return QStringLiteral("less than a minute");
    }
    if (seconds >= 2 * day) {
        return counted(seconds / day, QStringLiteral("day"));
    }
    return seconds >= 2 * hour ? counted(seconds / hour, QStringLiteral("hour"))
                               : counted(seconds / minute, QStringLiteral("minute"));
}

/** The one commit of the runs; empty when they have none or several. */
QString commitOf(const BaseFinder::RunList& runs) {
    QStringList commits;
    for (const Run& run : runs) {
        commits.append(run.labels.value(Revision::commitLabel()));
    }
    commits.removeDuplicates();
    return commits.size() == 1 ? commits.first() : QString();
}

} // namespace

BaseFinder::BaseFinder(int limit, Wanted wanted)
    : m_limit(limit)
    , m_isWanted(std::move(wanted)) {}

bool BaseFinder::isOf(const Run& run, const QString& commit) {
    return run.labels.value(Revision::commitLabel()) == commit;
}

std::optional<Problem> BaseFinder::find(const QString& place, const RunList& current,
                                        Console::Terminal& terminal) {
    const QString commit = commitOf(current);
    if (commit.isEmpty()) {
        return Problem{Message::NoBase,
                       QStringLiteral("no base: the present runs have no commit, or several; "
                                      "record them in a checkout, or name a data file as BASE")};
    }
    if (!readPlace(place, terminal)) {
        return Problem{Message::InputMissing,
                       place + QStringLiteral(": is no folder and no data file to find a base in; "
                                              "check the path")};
    }
    for (const Run& run : current) {
        noteParent(run);
    }
    const QStringList ancestors = ancestorsOf(commit);
    for (int i = 0; i < ancestors.size() && m_candidates.size() < mostCandidates; ++i) {
        const auto runs = m_runsOf.constFind(ancestors.at(i));
        if (runs == m_runsOf.cend()) {
            continue;
        }
        if (!runs->areComplete || !runs->areUnchanged) {
            ++m_unfit;
            continue;
        }
        m_candidates.push_back(runs->candidate);
        m_candidates.back().distance = i + 1;
    }
    if (m_candidates.empty()) {
        return noBase(place, commit, ancestors.size());
    }
    return std::nullopt;
}

Problem BaseFinder::noBase(const QString& place, const QString& commit, int ancestors) const {
    QString text =
        QStringLiteral("no base: of the %1 known before %2 none has complete runs in %3")
            .arg(counted(ancestors, QStringLiteral("commit")), commit.left(shortHash), place);
    if (m_unfit > 0) {
        text += QStringLiteral(" (%1 with partial runs or changes that were not committed)")
                    .arg(m_unfit);
    }
    text += ancestors < m_limit
                ? QStringLiteral("; fetch more of the history, or name a data file as BASE")
                : QStringLiteral("; raise --base-limit, or name a data file as BASE");
    return {Message::NoBase, text};
}

bool BaseFinder::readPlace(const QString& place, Console::Terminal& terminal) {
    QStringList files;
    if (QFileInfo(place).isDir()) {
        QDirIterator it(place, QDir::Files | QDir::Hidden | QDir::NoSymLinks,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            files.append(it.next());
        }
        files.sort();
    } else {
        files.append(place);
    }
    bool isRead = QFileInfo(place).isDir();
    for (const QString& path : qAsConst(files)) {
        if (!DataFile::looksLikeDataFile(path)) {
            continue;
        }
        if (const auto problem = readFile(path)) {
            terminal.warning(*problem);
        } else {
            isRead = true;
        }
    }
    return isRead;
}

std::optional<Problem> BaseFinder::readFile(const QString& path) {
    DataFile file;
    auto problem = file.open(path, Store::Sql::Access::Read);
    const QStringList uuids = problem ? QStringList() : file.runs();
    for (const QString& uuid : uuids) {
        Run run;
        problem = problem ? problem : file.readAttributes(uuid, run);
        if (!problem && m_isWanted(run)) {
            takeRun(run, path);
        }
    }
    return problem;
}

void BaseFinder::takeRun(const Run& run, const QString& file) {
    const QString commit = run.labels.value(Revision::commitLabel());
    if (commit.isEmpty()) {
        return;
    }
    noteParent(run);
    CommitRuns& runs = m_runsOf[commit];
    runs.candidate.commit = commit;
    runs.candidate.started = std::max(runs.candidate.started, run.started);
    runs.areComplete = runs.areComplete && run.isComplete;
    runs.areUnchanged = runs.areUnchanged && !run.labels.contains(Revision::changedLabel());
    const std::string path = QFile::encodeName(file).toStdString();
    if (runs.candidate.files.empty() || runs.candidate.files.back() != path) {
        runs.candidate.files.push_back(path);
    }
}

void BaseFinder::noteParent(const Run& run) {
    const QString parent =
        run.labels.value(Revision::parentsLabel()).section(QLatin1Char(' '), 0, 0);
    if (!parent.isEmpty()) {
        m_parentOf.insert(run.labels.value(Revision::commitLabel()), parent);
    }
}

/** The first-parent ancestors, nearest first: what git does not know, runs may. */
QStringList BaseFinder::ancestorsOf(const QString& commit) const {
    QStringList line = Revision::firstParents(commit, m_limit + 1);
    if (line.isEmpty()) {
        line.append(commit);
    }
    while (line.size() <= m_limit && m_parentOf.contains(line.last())) {
        const QStringList more =
            Revision::firstParents(m_parentOf.value(line.last()), m_limit + 1 - line.size());
        line += more.isEmpty() ? QStringList{m_parentOf.value(line.last())} : more;
    }
    return line.mid(1);
}

QString BaseFinder::describe(const Candidate& candidate, const RunList& current) {
    QString started;
    for (const Run& run : current) {
        started = std::max(started, run.started);
    }
    const qint64 age = QDateTime::fromString(candidate.started, Qt::ISODate)
                           .secsTo(QDateTime::fromString(started, Qt::ISODate));
    return QStringLiteral("%1, %2 before and %3 older")
        .arg(candidate.commit.left(shortHash),
             counted(candidate.distance, QStringLiteral("commit")),
             durationText(std::max<qint64>(age, 0)));
}

} // namespace Uicov::Commands
