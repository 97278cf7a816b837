// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "uiabstraction/pointertable.h"

#include <QHash>
#include <QList>
#include <QMetaType>
#include <QObject>
#include <QString>

#include <cstddef>
#include <vector>

namespace Vorsk {
namespace UIAbstraction {

class UIElement;

/**
 * All elements that a tracker made, in the order in which they were added. Announces each addition
 * so that exporters can attach to the element. Lists elements without owning them; only clear()
 * deletes. GUI thread only.
 */
class ElementStore : public QObject {
    Q_OBJECT

public:
    explicit ElementStore(QObject* parent = nullptr);
    ~ElementStore() override;

    /** Lists and announces the element; one that is listed already is listed and announced again.
     */
    void addElement(UIElement* element);

    /** The listed elements without a parent element, in list order. */
    QList<UIElement*> rootElements() const;
    /** A copy of the list. */
    QList<UIElement*> elements() const;
    // Both searches are for users of the model library; the extensions look elements up by object.
    /** The first listed element with exactly this id; null when none. */
    UIElement* elementById(const QString& id) const;
    bool containsElement(const QString& id) const;

    /** Deletes every root with all below it and empties the list. */
    void clear();

Q_SIGNALS:
    void elementAdded(const Vorsk::UIAbstraction::UIElement* element);

protected:
    /** Takes the element's first entry out of the list, without a search and without a signal. */
    void removeFirstEntry(UIElement* element);

private:
    void compact();
    void notePosition(UIElement* element, std::size_t position);

    /** The list; a removed entry leaves a null behind until the list is compacted. */
    std::vector<UIElement*> m_entries;
    std::size_t m_removedEntries = 0;
    PointerTable<std::size_t> m_firstPosition;
    /** Positions after the first, of the few elements that were added more than once. */
    QHash<const UIElement*, std::vector<std::size_t>> m_furtherPositions;
};

} // namespace UIAbstraction
} // namespace Vorsk

Q_DECLARE_METATYPE(const Vorsk::UIAbstraction::ElementStore*)
