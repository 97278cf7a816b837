// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "series.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <limits>
#include <utility>

#include <malloc.h>

namespace {

qint64 median(std::vector<qint64> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

qint64 computedSoFar() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64{time.tv_sec} * 1000000000 + time.tv_nsec;
}

void emptyCaches() {
    constexpr std::size_t moreThanAnyCache = std::size_t{96} * 1024 * 1024;
    static std::vector<char> memory(moreThanAnyCache);
    for (char& byte : memory) {
        ++byte;
    }
}

} // namespace

Series::Series(std::vector<int> sizes, int rounds)
    : m_sizes(std::move(sizes))
    , m_rounds(rounds) {
    // What was freed stays here: fetching it from the system again is not what is measured.
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    mallopt(M_MMAP_MAX, 0);
}

void Series::printHeader() const {
    std::printf("%-44s", "nanoseconds per item");
    for (const int size : m_sizes) {
        std::printf("%10d", size);
    }
    std::printf("%10s\n", "worst");
}

void Series::measure(const QString& name, const Work& work) {
    work(*std::max_element(m_sizes.cbegin(), m_sizes.cend()));
    std::vector<std::vector<qint64>> measured(m_sizes.size());
    for (int round = 0; round < m_rounds; ++round) {
        for (std::size_t i = 0; i < m_sizes.size(); ++i) {
            measured[i].push_back(work(m_sizes[i]));
        }
    }
    std::printf("%-44s", qPrintable(name));
    QJsonArray costs;
    double smallest = 0;
    double worst = 0;
    for (std::size_t i = 0; i < m_sizes.size(); ++i) {
        const double cost = static_cast<double>(median(measured[i])) / m_sizes[i];
        smallest = i == 0 ? cost : smallest;
        worst = std::max(worst, cost / smallest);
        std::printf("%10.0f", cost);
        costs.append(QJsonObject{{QStringLiteral("items"), m_sizes[i]},
                                 {QStringLiteral("nanosecondsPerItem"), cost}});
    }
    std::printf("%9.2fx\n", worst);
    Q_UNUSED(std::fflush(stdout));
    m_results.append(QJsonObject{{QStringLiteral("name"), name},
                                 {QStringLiteral("rounds"), m_rounds},
                                 {QStringLiteral("worstFactor"), worst},
                                 {QStringLiteral("costs"), costs}});
}

qint64 nanoseconds(const std::function<void()>& function) {
    emptyCaches();
    const qint64 start = computedSoFar();
    function();
    return computedSoFar() - start;
}

bool writeJson(const QStringList& arguments, const QString& program, const Series& series) {
    const int option = arguments.indexOf(QStringLiteral("--json"));
    if (option == -1 || option + 1 >= arguments.size()) {
        return true;
    }
    QFile file(arguments.at(option + 1));
    const QJsonObject document{{QStringLiteral("program"), program},
                               {QStringLiteral("series"), series.results()}};
    const QByteArray json = QJsonDocument(document).toJson();
    if (!file.open(QIODevice::WriteOnly) || file.write(json) != json.size() || !file.flush()) {
        qCritical("%s: cannot write %s: %s", qPrintable(program), qPrintable(file.fileName()),
                  qPrintable(file.errorString()));
        return false;
    }
    return true;
}
