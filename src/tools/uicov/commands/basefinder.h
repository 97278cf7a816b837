// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"
#include "run/run.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Uicov::Console {
class Terminal;
}

namespace Uicov::Commands {

/**
 * Finds what present runs are to be compared with: among the runs in a folder of data files those
 * of the nearest first-parent ancestor of the present commit of which every run is complete and was
 * made from an unchanged checkout. Ancestors are known from git where it is there, and from what
 * the runs themselves say of their parents, so that a shallow clone is enough.
 */
class BaseFinder {
public:
    using RunList = std::vector<Runs::Run>;
    using Wanted = std::function<bool(const Runs::Run&)>;

    /** The runs of one commit. */
    struct Candidate {
        QString commit;
        /** Commits from it to the present one, above zero. */
        int distance = 0;
        /** Data files that hold runs of it, in the order of their names. */
        std::vector<std::string> files;
        /** Start of its last run, as Run::started. */
        QString started;
    };

    /**
     * @param limit  how many commits to go back at most
     * @param wanted which runs can be a base at all
     */
    BaseFinder(int limit, Wanted wanted);

    /**
     * @param place   a folder, which is looked through with all below it, or a data file
     * @param current the runs that want a base
     * @return the problem when there is no base
     */
    std::optional<Base::Problem> find(const QString& place, const RunList& current,
                                      Console::Terminal& terminal);

    /** The base, and behind it those before it, the nearest first. */
    const std::vector<Candidate>& candidates() const { return m_candidates; }

    /** What it is, in words: commit, distance, and how much older it is than the runs. */
    static QString describe(const Candidate& candidate, const RunList& current);

    /** Whether the run is of that commit. */
    static bool isOf(const Runs::Run& run, const QString& commit);

private:
    struct CommitRuns {
        Candidate candidate;
        bool areComplete = true;
        bool areUnchanged = true;
    };

    bool readPlace(const QString& place, Console::Terminal& terminal);
    std::optional<Base::Problem> readFile(const QString& path);
    void takeRun(const Runs::Run& run, const QString& file);
    void noteParent(const Runs::Run& run);
    QStringList ancestorsOf(const QString& commit) const;
    Base::Problem noBase(const QString& place, const QString& commit, int ancestors) const;

    int m_limit;
    Wanted m_isWanted;
    std::vector<Candidate> m_candidates;
    /** Ancestors that have runs, but not such as can be a base. */
    int m_unfit = 0;
    QHash<QString, CommitRuns> m_runsOf;
    /** First parents that runs tell of. */
    QHash<QString, QString> m_parentOf;
};

} // namespace Uicov::Commands
