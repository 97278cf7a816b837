// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QElapsedTimer>
#include <QString>

#include <functional>

namespace Uicov::Console {

class Terminal;

/**
 * Tells on standard error how far a long piece of work has come; work that is quick says nothing.
 * On a terminal one line is rewritten and taken away at the end, elsewhere there is a new line from
 * time to time. Lives as long as the work; costs next to nothing a step.
 */
class Progress {
public:
    /** Milliseconds that have passed since any fixed moment. */
    using Clock = std::function<qint64()>;

    static constexpr qint64 quietTime = 2000;       ///< milliseconds in which nothing is said
    static constexpr qint64 terminalInterval = 200; ///< milliseconds between rewritings
    static constexpr qint64 plainInterval = 10000;  ///< milliseconds between two lines

    /**
     * @param activity what is being done, as "combining"
     * @param unit     of what total and steps are, in the plural, as "runs"
     * @param total    0 where it is not known beforehand
     */
    Progress(Terminal& terminal, const QString& activity, const QString& unit, qint64 total,
             Clock clock = Clock());
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /** So many more are done. */
    void advance(qint64 steps = 1);
    qint64 done() const { return m_done; }

private:
    QString line() const;
    void show(qint64 now);

    Terminal& m_terminal;
    QString m_activity;
    QString m_unit;
    qint64 m_total;
    qint64 m_done = 0;
    QElapsedTimer m_timer;
    Clock m_clock;
    bool m_isOnTerminal;
    qint64 m_nextTime;
};

} // namespace Uicov::Console
