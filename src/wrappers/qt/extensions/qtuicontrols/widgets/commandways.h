// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementtype.h"

#include <QString>

QT_BEGIN_NAMESPACE
class QAction;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/** A set of the ways in which a command is reached. A value. */
class WaySet {
public:
    /** The set that text() has made the text of; names that it does not know are left out. */
    static WaySet of(const QString& text);
    void add(Way way) { m_bits |= bit(way); }
    bool contains(Way way) const { return (m_bits & bit(way)) != 0; }
    bool isEmpty() const { return m_bits == 0; }
    /** The names, separated by spaces, in the order of the enumeration; null when there are none.
     */
    QString text() const;

private:
    static unsigned bit(Way way) { return 1U << static_cast<unsigned>(way); }

    unsigned m_bits = 0;
};

/** How an action that the widget lists is reached through it; Shortcut when the widget only has
 * it for its shortcut. */
Way wayThrough(const QWidget* lister);

} // namespace UIControls
} // namespace Vorsk
