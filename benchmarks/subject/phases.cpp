// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "phases.h"

#include <QFile>

#include <ctime>

#include <malloc.h>

namespace {

double seconds(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/** The largest resident memory so far, in bytes; 0 where the system does not tell. */
double peakMemory() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith("VmHWM:")) {
            return line.mid(6).trimmed().split(' ').constFirst().toDouble() * 1024;
        }
    }
    return 0;
}

} // namespace

extern "C" {

/** One phase by itself; known by this name to a tool that counts instructions. */
Q_DECL_EXPORT Q_NEVER_INLINE void measured(const std::function<void()>& work) {
    work();
}
}

void Phases::run(const QString& name, const std::function<void()>& work) {
    const double processorStart = seconds(CLOCK_PROCESS_CPUTIME_ID);
    const double start = seconds(CLOCK_MONOTONIC);
    measured(work);
    const double wall = seconds(CLOCK_MONOTONIC) - start;
    const double processor = seconds(CLOCK_PROCESS_CPUTIME_ID) - processorStart;
    m_results.insert(name, QJsonObject{{QStringLiteral("wall"), wall},
                                       {QStringLiteral("cpu"), processor},
                                       {QStringLiteral("peak"), peakMemory()}});
}

double Phases::heapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks) + static_cast<double>(info.hblkhd);
}
