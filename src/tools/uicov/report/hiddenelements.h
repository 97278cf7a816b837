// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/pattern.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <vector>

namespace Uicov::Runs {
struct Run;
struct RunElement;
} // namespace Uicov::Runs

namespace Uicov::Report {

/**
 * Elements that were recorded and are no step of any key, so that no report names them: mere
 * structure, and the insides of others. For people who look for one of them all the same.
 */
class HiddenElements {
public:
    /** @param part the text, class or type to look for, as a pattern or a part of it */
    explicit HiddenElements(const QString& part);

    void look(const Runs::Run& run);

    bool isEmpty() const { return m_elements.isEmpty(); }
    /** What was found and why it does not count, with the runs that have it. */
    QString toString() const;

private:
    bool isMeant(const Runs::RunElement& element) const;
    static QString reasonOf(const Runs::Run& run, int index, const std::vector<QString>& keys);

    QString m_part;
    Coverage::Pattern m_pattern;
    /** Runs by what is said of the element. */
    QMap<QString, QStringList> m_elements;
};

} // namespace Uicov::Report
