// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "console/progress.h"

#include "console/terminal.h"

#include <utility>

namespace Uicov::Console {

Progress::Progress(Terminal& terminal, const QString& activity, const QString& unit, qint64 total,
                   Clock clock)
    : m_terminal(terminal)
    , m_activity(activity)
    , m_unit(unit)
    , m_total(total)
    , m_clock(std::move(clock))
    , m_isOnTerminal(terminal.isErrorTerminal()) {
    m_timer.start();
    if (!m_clock) {
        m_clock = [this]() { return m_timer.elapsed(); };
    }
    m_nextTime = m_clock() + quietTime;
}

Progress::~Progress() {
    m_terminal.clearStatus();
}

void Progress::advance(qint64 steps) {
    m_done += steps;
    const qint64 now = m_clock();
    if (now >= m_nextTime && m_terminal.showsProgress()) {
        show(now);
    }
}

void Progress::show(qint64 now) {
    m_nextTime = now + (m_isOnTerminal ? terminalInterval : plainInterval);
    if (m_isOnTerminal) {
        m_terminal.showStatus(line());
    } else {
        m_terminal.note(line());
    }
}

QString Progress::line() const {
    if (m_total <= 0) {
        return QStringLiteral("%1: %2 %3").arg(m_activity).arg(m_done).arg(m_unit);
    }
    constexpr qint64 whole = 100;
    // Rounded down, so that 100% is said of nothing that is not done.
    return QStringLiteral("%1: %2 of %3 %4 (%5%)")
        .arg(m_activity)
        .arg(m_done)
        .arg(m_total)
        .arg(m_unit)
        .arg(qMin(whole, m_done * whole / m_total));
}

} // namespace Uicov::Console
