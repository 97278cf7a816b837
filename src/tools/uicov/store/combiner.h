// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"
#include "store/datafile.h"

#include <QString>
#include <QVector>

#include <functional>
#include <optional>

namespace Uicov::Store {

/**
 * Puts the runs of many files into one data file, each once: whatever the order of the files, how
 * they are grouped, and how often one is named, the same runs are in it. Memory is bounded by the
 * largest run. The files are only read.
 */
class Combiner {
public:
    /** @param target outlives this */
    explicit Combiner(DataFile& target);

    /** Which runs are taken, by all but their elements and pictures. */
    using Filter = std::function<bool(const Runs::Run&)>;

    void setTakesPictures(bool takes) { m_takesPictures = takes; }
    /** None takes all runs. */
    void setFilter(const Filter& filter) { m_filter = filter; }

    /**
     * Adds all runs of a recording or data file, or none of them. Stops between two runs when the
     * process is asked to end and that is deferred; the target is not to be used then.
     * @return the problem when the file cannot be used; the target then is as it was, unless
     *         failure() tells that it is the target itself
     */
    std::optional<Base::Problem> add(const QString& path);

    /** What is wrong with the last file although it could be used. */
    const QVector<Base::Problem>& warnings() const { return m_warnings; }
    /** Set when the target cannot be written, so that there is no use in going on. */
    const std::optional<Base::Problem>& failure() const { return m_failure; }

    int newRuns() const { return m_newRuns; }
    /** Runs that were there already, in this or a more complete form, or that replaced it. */
    int knownRuns() const { return m_knownRuns; }

private:
    std::optional<Base::Problem> addRecording(const QString& path);
    std::optional<Base::Problem> addDataFile(const QString& path);
    std::optional<Base::Problem> addRuns(DataFile& source, const QStringList& uuids,
                                         std::optional<Base::Problem> damage);
    /** @param digest as the file that it was read from says; empty for a recording */
    bool addRun(const Runs::Run& run, const QByteArray& digest);

    DataFile& m_target;
    bool m_takesPictures = true;
    Filter m_filter;
    QVector<Base::Problem> m_warnings;
    std::optional<Base::Problem> m_failure;
    int m_newRuns = 0;
    int m_knownRuns = 0;
};

} // namespace Uicov::Store
