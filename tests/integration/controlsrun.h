// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "run/runloader.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/** A program that ran to its end under "uicov run" with the controls extension, whatever the tests'
 * environment says about the classic one. */
class ControlsRun {
public:
    explicit ControlsRun(const QString& program, const QStringList& arguments = {});

    /** Empty when the program passed and all of its recording could be read, else what went wrong.
     */
    QString problem() const { return m_problem; }
    Uicov::Runs::Run run() const { return m_recording->run(); }
    /** The elements of that standard type, as describe() tells them, in the order of the recording.
     */
    QStringList all(const QString& type) const;
    /** Every control that was used, a line for each element, as describe()
     * tells it. Sorted. */
    QStringList usedControls() const;

    /** Type, name, events with their counts, and the ways that were used: Command "Save"
     * triggered=2 by shortcut. */
    static QString describe(const Uicov::Runs::RunElement& element);

private:
    QTemporaryDir m_directory;
    QString m_problem;
    std::unique_ptr<Uicov::Runs::RunLoader> m_recording;
};
