// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coveragetree.h"

#include <QString>
#include <QVector>

#include <vector>

namespace Uicov::Coverage {

/**
 * Finds elements by what people write: a key, the name that the reports print (with the caption in
 * place of the name of the program's authors), a pattern, or a part of either. Made for a tree that
 * changes no more.
 */
class ElementSearch {
public:
    /** @param tree outlives this */
    explicit ElementSearch(const CoverageTree& tree);

    /**
     * Those whose key or name it is; if none, the only one whose key or name begins so; if none,
     * those that are like it as a pattern; if none, those that contain it. Of those that are in the
     * numbers, and if none, of the others that have a key. Empty when there are none.
     */
    QVector<NodeId> find(const QString& text) const;

    /** The only one that is in the numbers and whose key or name begins so, or is this; None when
     * there are none or several. */
    NodeId findByPrefix(const QString& text) const;

private:
    struct Entry {
        NodeId node;
        bool isInNumbers;
        QString key;
        QString name;
    };

    std::vector<Entry> m_entries;
};

} // namespace Uicov::Coverage
