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

/** The name that the program's authors gave it; empty without one. */
QString ownName(const QQuickItem* item) {
    const QString id = qmlIdOf(item);
    return id.isEmpty() ? item->objectName() : id;
}

QString withOrdinal(const QByteArray& cls, int ordinal) {
    return ordinal == 0 ? QString::fromUtf8(cls)
                        : QStringLiteral("%1[%2]").arg(QString::fromUtf8(cls)).arg(ordinal);
}

/** What an item is called on the way to it. */
QString step(const QQuickItem* item) {
    const QString name = ownName(item);
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
    return withOrdinal(cls, ordinal);
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

SiblingMakers::SiblingMakers(const QQuickItem* parent)
    : m_item(parent) {
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

QString SiblingMakers::groupOf(const QQuickItem* child, const QString& parentsGroup,
                               const Maker& maker) {
    if (maker.item != nullptr) {
        const QString file = maker.makesRows ? QString() : qmlFileOf(child);
        return groupOfMaker(maker.item) + QLatin1Char('/') +
               (file.isEmpty() ? QString() : file + QLatin1Char(':')) +
               QString::fromUtf8(stableClassName(child));
    }
    if (parentsGroup.isNull()) {
        return {};
    }
    const QString name = ownName(child);
    return parentsGroup + QLatin1Char('/') +
           (name.isEmpty() ? withOrdinal(stableClassName(child), ordinalOf(child)) : name);
}

/** What the groups of all that it makes begin with. */
const QString& SiblingMakers::groupOfMaker(QQuickItem* maker) {
    QString& known = m_makersGroups[maker];
    if (known.isNull()) {
        const QString outer = UIControls::groupOf(maker);
        known = outer.isNull() ? nameOf(maker) : outer;
    }
    return known;
}

int SiblingMakers::ordinalOf(const QQuickItem* child) {
    if (m_ordinals.isEmpty()) {
        QHash<QByteArray, int> numbers;
        const QList<QQuickItem*> children = m_item->childItems();
        for (const QQuickItem* each : children) {
            m_ordinals.insert(each, numbers[stableClassName(each)]++);
        }
    }
    return m_ordinals.value(child);
}

QString groupOf(QQuickItem* item) {
    QQuickItem* const parent = item->parentItem();
    if (parent == nullptr) {
        return {};
    }
    SiblingMakers makers(parent);
    return makers.groupOf(item, groupOf(parent), makers.makerOf(item));
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
