// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

QT_BEGIN_NAMESPACE
class QProcessEnvironment;
QT_END_NAMESPACE

/**
 * One unmodified program that the plugin plays with while an extension records it, from its start
 * to its end. It has a home of its own and, where the test is run by root, the rights of nobody:
 * who presses without sense finds the dialog that removes files.
 */
class ProgramRun {
public:
    /** @param command the program and its arguments */
    ProgramRun(const QStringList& command, quint32 seed, int steps);

    /**
     * False when it did not end in order; end() says how it ended. A program that the same seed
     * brings to the same end without an extension has ended as it does.
     */
    bool record(const QString& extension);
    /** The same without an extension, with a journal that nobody reads. */
    bool play();

    QString end() const { return m_end; }
    QString journal() const { return m_folder.filePath(QStringLiteral("journal.jsonl")); }
    QString recording() const { return m_folder.filePath(QStringLiteral("run.uirec")); }
    /** What it wrote to standard error, each once, sorted, with the numbers taken out. */
    QStringList lines() const { return m_lines; }

private:
    bool run(const QProcessEnvironment& environment);
    QProcessEnvironment environment() const;
    void takeLines(const QString& output);

    QStringList m_command;
    quint32 m_seed;
    int m_steps;
    /** What is written while it runs is not in its home, where file dialogs would see it grow. */
    QTemporaryDir m_folder;
    QTemporaryDir m_home;
    QString m_end;
    QStringList m_lines;
};
