// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonObject>
#include <QString>

#include <functional>

/**
 * What each phase of a program costs: wall time, processor time of the whole process, and the
 * largest memory that the process held so far. Kept as JSON, one object for each phase.
 */
class Phases {
public:
    /** Runs the work and keeps its cost under the name. */
    void run(const QString& name, const std::function<void()>& work);

    QJsonObject results() const { return m_results; }

    /** Bytes that the program has from the heap at this moment. */
    static double heapInUse();

private:
    QJsonObject m_results;
};
