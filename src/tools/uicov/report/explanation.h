// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coverageresult.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>

namespace Uicov::Report {

/**
 * Why elements count as they do: the rule for their state, where each hit came from, and what they
 * were in each run. Choose elements, show all runs once more, then take the text.
 */
class Explanation {
public:
    /** @param coverage outlives this */
    explicit Explanation(const Coverage::CoverageResult& coverage);

    /**
     * Chooses the elements that are meant, as Coverage::ElementSearch::find() says.
     * @return false when there is no such element
     */
    bool choose(const QString& key);
    /** The key that is spelt most alike; null when there are no elements. */
    QString nearest(const QString& key) const;

    /** Keeps what the run says of the chosen elements. */
    void look(const Runs::Run& run);

    QString toString() const;

private:
    QString explained(Coverage::NodeId node) const;
    QString reasonOf(Coverage::NodeId node) const;
    QString askedOf(const Coverage::CoverageTree::Node& element) const;
    QString identityOf(Coverage::NodeId node) const;
    QString reasonOfView(Coverage::NodeId node) const;

    const Coverage::CoverageResult& m_coverage;
    QVector<Coverage::NodeId> m_nodes;
    /** By application and key: lines about hits, and about the element in each run. */
    QMap<QString, QStringList> m_hits;
    QMap<QString, QStringList> m_runs;
};

} // namespace Uicov::Report
