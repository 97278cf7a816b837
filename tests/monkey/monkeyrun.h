// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>
#include <QSet>
#include <QString>
#include <QTemporaryDir>

/**
 * One program used by the monkey from its start to its end, alone or recorded by "uicov run". It
 * has a home of its own and, where the test is run by root, the rights of nobody: a monkey finds
 * the dialog that removes files.
 */
class MonkeyRun {
public:
    struct Outcome {
        /** "ended with N", "killed by signal N", "hangs" or "does not start". */
        QString end;
        /** The monkey came to its end; otherwise the program ended by itself. */
        bool isDone = false;
        /** What the program printed, with numbers taken out, but for what only tells what it does:
         * that is another thing at each turn that it takes. */
        QSet<QString> lines;
        /** What is wrong with the recording; empty when nothing is, or when there is none. */
        QString recordingProblem;
    };

    /** How the program is recorded. */
    struct Way {
        bool isClassic = false;
        bool withScreenshots = false;
    };

    /** @param display of an X server; without one the program runs offscreen */
    MonkeyRun(const QString& program, quint32 seed, const QString& display);

    Outcome alone();
    Outcome recorded(Way way);

private:
    Outcome run(const QStringList& command);
    QProcessEnvironment environment() const;

    QString m_program;
    quint32 m_seed;
    QString m_display;
    QTemporaryDir m_home;
};
