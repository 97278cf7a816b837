// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QString>
#include <QVector>

QT_BEGIN_NAMESPACE
class QQuickItem;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

// Groups: what a view, a Repeater, a Loader or a StackView makes again and again has one text, the
// same from run to run. The text is the way from what makes it down to the item, in ids where there
// are any, without the ordinal of what is repeated: "Main.qml:list/ItemDelegate/remove".

/** What makes an item again and again. */
struct Maker {
    QQuickItem* item = nullptr;
    /** Makes one for each row of its data, and not one after another. */
    bool makesRows = false;
};

/** The makers among the children of one item, and the groups of the children. Good for one look at
 * all of them. */
class SiblingMakers {
public:
    explicit SiblingMakers(const QQuickItem* parent);

    /** What made the parent's child; without an item when it is there by itself. */
    Maker makerOf(const QQuickItem* child) const;

    /** The child's group, where the parent's is known. */
    QString groupOf(const QQuickItem* child, const QString& parentsGroup, const Maker& maker);

private:
    struct Made {
        const QQuickItem* item;
        QQuickItem* repeater;
    };

    const QString& groupOfMaker(QQuickItem* maker);
    int ordinalOf(const QQuickItem* child);

    const QQuickItem* m_item;
    /** Makes all children. */
    Maker m_parent;
    /** By address of what was made. */
    QVector<Made> m_made;
    /** Found by climbing, once for each. */
    QHash<const QQuickItem*, QString> m_makersGroups;
    /** Among the siblings of the same class; empty until one is asked for. */
    QHash<const QQuickItem*, int> m_ordinals;
};

/** The group of an item; null when it is no part of anything that is made again. */
QString groupOf(QQuickItem* item);
/** Whether it, or something that it lies in, is one of many rows. */
bool isInRow(const QQuickItem* item);

/** Whether the view shows rows of data, and is not how a container or a menu shows its items. */
bool showsRows(const QQuickItem* view);

} // namespace UIControls
} // namespace Vorsk
