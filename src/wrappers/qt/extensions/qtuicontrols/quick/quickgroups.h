// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

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

/** The makers among the children of one item. */
class SiblingMakers {
public:
    explicit SiblingMakers(const QQuickItem* parent);

    /** What made the parent's child; without an item when it is there by itself. */
    Maker makerOf(const QQuickItem* child) const;

private:
    struct Made {
        const QQuickItem* item;
        QQuickItem* repeater;
    };

    /** Makes all children. */
    Maker m_parent;
    /** By address of what was made. */
    QVector<Made> m_made;
};

/** The group of an item; null when it is no part of anything that is made again. */
QString groupOf(QQuickItem* item);
/** The same, where the parent's group is known. */
QString groupOf(QQuickItem* item, const QString& parentsGroup, const Maker& maker);
/** Whether it, or something that it lies in, is one of many rows. */
bool isInRow(const QQuickItem* item);

/** Whether the view shows rows of data, and is not how a container or a menu shows its items. */
bool showsRows(const QQuickItem* view);

} // namespace UIControls
} // namespace Vorsk
