// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QPointer>
#include <QQuickItem>

#include <vector>

namespace Vorsk {
namespace UIControls {

class SignalHubs;

/** The items that were looked into, and which of them have got or lost children since. GUI thread
 * only. */
class QuickContainers {
public:
    explicit QuickContainers(SignalHubs& hubs)
        : m_hubs(hubs) {}

    bool isKnown(const QQuickItem* item) const;
    /** What comes into it is noted from now on. */
    void remember(QQuickItem* item);
    /** The item, known or not, may be half destroyed: its address alone is looked at. */
    void noteChange(const QQuickItem* item);
    /** Those that changed since the last call and still live. */
    std::vector<QPointer<QQuickItem>> takeChanged();

private:
    struct Container {
        QPointer<QQuickItem> item;
        bool hasChanged = false;
    };

    void removeDead();

    SignalHubs& m_hubs;
    QHash<const QQuickItem*, Container> m_containers;
    int m_sizeToClean = 1024;
    std::vector<const QQuickItem*> m_changed;
};

} // namespace UIControls
} // namespace Vorsk
