// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "uiabstraction/elementstore.h"

#include "uiabstraction/uielement.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace Vorsk {
namespace UIAbstraction {

namespace {

/** Below this many removed entries the list is not worth compacting. */
constexpr std::size_t fewRemovedEntries = 64;

} // namespace

ElementStore::ElementStore(QObject* parent)
    : QObject(parent) {
    qRegisterMetaType<const ElementStore*>("const Vorsk::UIAbstraction::ElementStore*");
}

ElementStore::~ElementStore() = default;

void ElementStore::addElement(UIElement* element) {
    notePosition(element, m_entries.size());
    m_entries.push_back(element);
    Q_EMIT elementAdded(element);
}

QList<UIElement*> ElementStore::rootElements() const {
    QList<UIElement*> roots;
    for (UIElement* element : m_entries) {
        if (element != nullptr && element->isRoot()) {
            roots.append(element);
        }
    }
    return roots;
}

QList<UIElement*> ElementStore::elements() const {
    QList<UIElement*> listed;
    listed.reserve(static_cast<int>(m_entries.size() - m_removedEntries));
    std::copy_if(m_entries.cbegin(), m_entries.cend(), std::back_inserter(listed),
                 [](const UIElement* element) { return element != nullptr; });
    return listed;
}

UIElement* ElementStore::elementById(const QString& id) const {
    const auto it =
        std::find_if(m_entries.cbegin(), m_entries.cend(), [&id](const UIElement* element) {
            return element != nullptr && element->id() == id;
        });
    return it == m_entries.cend() ? nullptr : *it;
}

bool ElementStore::containsElement(const QString& id) const {
    return elementById(id) != nullptr;
}

void ElementStore::clear() {
    const QList<UIElement*> roots = rootElements();
    m_entries.clear();
    m_removedEntries = 0;
    m_firstPosition.clear();
    m_furtherPositions.clear();
    // A root can be listed twice, and dies once.
    QSet<const UIElement*> deleted;
    for (UIElement* root : roots) {
        if (!deleted.contains(root)) {
            deleted.insert(root);
            delete root;
        }
    }
}

void ElementStore::removeFirstEntry(UIElement* element) {
    std::size_t* const first = m_firstPosition.find(element);
    if (first == nullptr) {
        return;
    }
    m_entries[*first] = nullptr;
    ++m_removedEntries;
    const auto further = m_furtherPositions.find(element);
    if (further == m_furtherPositions.end()) {
        m_firstPosition.remove(element);
    } else {
        *first = further->front();
        further->erase(further->begin());
        if (further->empty()) {
            m_furtherPositions.erase(further);
        }
    }
    if (m_removedEntries > fewRemovedEntries && m_removedEntries > m_entries.size() / 2) {
        compact();
    }
}

void ElementStore::compact() {
    // The tables are corrected where they stand: filling them anew costs many times as much.
    std::size_t kept = 0;
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        UIElement* const element = m_entries[i];
        if (element == nullptr) {
            continue;
        }
        std::size_t& first = *m_firstPosition.find(element);
        if (first == i) {
            first = kept;
        } else {
            std::vector<std::size_t>& further = m_furtherPositions[element];
            *std::find(further.begin(), further.end(), i) = kept;
        }
        m_entries[kept++] = element;
    }
    m_entries.resize(kept);
    m_removedEntries = 0;
}

void ElementStore::notePosition(UIElement* element, std::size_t position) {
    if (!m_firstPosition.contains(element)) {
        m_firstPosition[element] = position;
    } else {
        m_furtherPositions[element].push_back(position);
    }
}

} // namespace UIAbstraction
} // namespace Vorsk
