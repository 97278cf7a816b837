// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonArray>
#include <QString>

#include <functional>
#include <vector>

/**
 * The same work at several sizes: what one item costs at each, side by side. All sizes are measured
 * in every round, so that what disturbs the machine disturbs all of them, and the median of the
 * rounds counts. One round at the largest size comes first and is not measured: the heap has then
 * its final size for all of them.
 */
class Series {
public:
    /** @return nanoseconds that the work took for that many items, without what led up to it */
    using Work = std::function<qint64(int items)>;

    Series(std::vector<int> sizes, int rounds);

    /**
     * Measures, prints one line of the table to standard output and keeps the result. The line ends
     * with how many times the cost at the smallest size the highest one is.
     */
    void measure(const QString& name, const Work& work);
    void printHeader() const;

    QJsonArray results() const { return m_results; }

private:
    std::vector<int> m_sizes;
    int m_rounds;
    QJsonArray m_results;
};

/**
 * Nanoseconds that this thread computes in the function, so that other programs do not count. The
 * caches hold nothing of use when it begins, as in an application that has painted a window since:
 * otherwise a few items would be measured in the cache and many in memory.
 */
qint64 nanoseconds(const std::function<void()>& function);

/**
 * Writes the results of the series as JSON to the file that "--json FILE" names among the
 * arguments, if any.
 * @return false when that file cannot be written
 */
bool writeJson(const QStringList& arguments, const QString& program, const Series& series);
