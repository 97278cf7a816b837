// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coveragetree.h"

#include <QMap>
#include <QPair>
#include <QString>

// The elements of a coverage as a comparison looks at them.
namespace Uicov::Coverage {

/** Application and key. */
using Identity = QPair<QString, QString>;

/** What counts of an element. */
struct Entry {
    State state = State::Missed;
    QString structureKey;
    QString type;
    /** The key without its last step. */
    QString above;
    QString label;
    NodeId node = NodeId::None;
};

using Entries = QMap<Identity, Entry>;

/** All elements of the tree that count. */
Entries entriesOf(const CoverageTree& tree);

} // namespace Uicov::Coverage
