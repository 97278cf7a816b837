// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickgroups.h"

#include "qtuicontrols/quick/quickclass.h"
#include "qtuicontrols/quick/quicknames.h"

#include <QMetaMethod>
#include <QQuickItem>

#include <algorithm>

namespace Vorsk {
namespace UIControls {

namespace {

QQuickItem* itemAt(QQuickItem* repeater, int index) {
    static const QMetaMethod method = [repeater] {
        const QMetaObject* const cls = repeater->metaObject();
        return cls->method(cls->indexOfMethod("itemAt(int)"));
    }();
    QQuickItem* item = nullptr;
    method.invoke(repeater, Qt::DirectConnection, Q_RETURN_ARG(QQuickItem*, item),
                  Q_ARG(int, index));
    return item;
}

bool isContainer(const QObject* object) {
    const QuickRole role = QuickClass::of(object).role();
    return role == QuickRole::Container || role == QuickRole::SwipeView;
}

/** What an item is called on the way to it. */
QString step(const QQuickItem* item) {
    QString name = qmlIdOf(item);
    if (name.isEmpty()) {
        name = item->objectName();
    }
    if (!name.isEmpty()) {
        return name;
    }
    const QByteArray cls = stableClassName(item);
    int ordinal = 0;
    if (const QQuickItem* const parent = item->parentItem()) {
        const QList<QQuickItem*> siblings = parent->childItems();
        for (const QQuickItem* sibling : siblings) {
            if (sibling == item) {
                break;
            }
            ordinal += stableClassName(sibling) == cls ? 1 : 0;
        }
    }
    return ordinal == 0 ? QString::fromUtf8(cls)
                        : QStringLiteral("%1[%2]").arg(QString::fromUtf8(cls)).arg(ordinal);
}

/** By file and id; without an id, by the way from the next item above that has one. */
QString nameOf(const QQuickItem* maker) {
    constexpr int most = 6;
    QStringList steps{step(maker)};
    const QQuickItem* item = maker;
    while (steps.size() < most && qmlIdOf(item).isEmpty() && item->parentItem() != nullptr) {
        item = item->parentItem();
        steps.prepend(step(item));
    }
    return qmlFileOf(maker) + QLatin1Char(':') + steps.join(QLatin1Char('/'));
}

} // namespace

bool showsRows(const QQuickItem* view) {
    const QQuickItem* const parent = view->parentItem();
    if (parent == nullptr) {
        return true;
    }
    if (QuickClass::of(parent).role() == QuickRole::PopupItem) {
        return parent->parent() == nullptr ||
               QuickClass::of(parent->parent()).type() != ElementType::Menu;
    }
    return !isContainer(parent) && QuickClass::of(parent).name() != "TabBar";
}

SiblingMakers::SiblingMakers(const QQuickItem* parent) {
    auto* const item = const_cast<QQuickItem*>(parent); // as it was given
    const QuickClass& cls = QuickClass::of(parent);
    if (cls.role() == QuickRole::Loader || cls.role() == QuickRole::StackView) {
        // What Qt's Controls load makes their parts, and a tab of the first generation is loaded
        // once.
        if (cls.name() != "Tab" && !isInsideQtControls(parent)) {
            m_parent = {item, false};
        }
        return;
    }
    if (cls.name() == "QQuickPathView") { // has no content item
        m_parent = {item, showsRows(parent)};
        return;
    }
    QQuickItem* const above = parent->parentItem();
    if (above != nullptr && QuickClass::of(above).role() == QuickRole::ItemView &&
        showsRows(above)) {
        m_parent = {above, true};
        return;
    }
    const QList<QQuickItem*> children = parent->childItems();
    for (QQuickItem* child : children) {
        if (QuickClass::of(child).role() != QuickRole::Repeater) {
            continue;
        }
        const int count = child->property("count").toInt();
        for (int i = 0; i < count; ++i) {
            if (const QQuickItem* const made = itemAt(child, i)) {
                m_made.append({made, child});
            }
        }
    }
    std::sort(m_made.begin(), m_made.end(),
              [](const Made& a, const Made& b) { return a.item < b.item; });
}

Maker SiblingMakers::makerOf(const QQuickItem* child) const {
    if (m_parent.item != nullptr) {
        return m_parent;
    }
    const auto made =
        std::lower_bound(m_made.cbegin(), m_made.cend(), child,
                         [](const Made& a, const QQuickItem* b) { return a.item < b; });
    return made != m_made.cend() && made->item == child ? Maker{made->repeater, true} : Maker();
}

QString groupOf(QQuickItem* item) {
    QQuickItem* const parent = item->parentItem();
    if (parent == nullptr) {
        return {};
    }
    return groupOf(item, groupOf(parent), SiblingMakers(parent).makerOf(item));
}

QString groupOf(QQuickItem* item, const QString& parentsGroup, const Maker& maker) {
    if (maker.item != nullptr) {
        const QString outer = groupOf(maker.item);
        const QString file = maker.makesRows ? QString() : qmlFileOf(item);
        return (outer.isNull() ? nameOf(maker.item) : outer) + QLatin1Char('/') +
               (file.isEmpty() ? QString() : file + QLatin1Char(':')) +
               QString::fromUtf8(stableClassName(item));
    }
    return parentsGroup.isNull() ? QString() : parentsGroup + QLatin1Char('/') + step(item);
}

bool isInRow(const QQuickItem* item) {
    for (const QQuickItem* parent = item->parentItem(); parent != nullptr;
         item = parent, parent = parent->parentItem()) {
        if (SiblingMakers(parent).makerOf(item).makesRows) {
            return true;
        }
    }
    return false;
}

} // namespace UIControls
} // namespace Vorsk
