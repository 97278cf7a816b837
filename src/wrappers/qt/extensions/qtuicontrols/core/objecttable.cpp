// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/core/objecttable.h"

#include <algorithm>

namespace Vorsk {
namespace UIControls {

using UIAbstraction::UIElement;

void ObjectTable::insert(QObject* object, UIElement* element) {
    if (m_elements.size() >= m_sizeToClean) {
        removeDead();
        m_sizeToClean = std::max(m_sizeToClean, 2 * m_elements.size());
    }
    Entry& entry = m_elements[object];
    entry.element = element;
    entry.living = object;
    m_objects[element] = object;
}

UIElement* ObjectTable::elementOf(const QObject* object) const {
    const Entry* const entry = m_elements.find(object);
    return entry == nullptr || entry->living.isNull() ? nullptr : entry->element;
}

QObject* ObjectTable::objectOf(const UIElement* element) const {
    QObject* const object = m_objects.value(element);
    const Entry* const entry = object == nullptr ? nullptr : m_elements.find(object);
    return entry == nullptr || entry->living.isNull() || entry->element != element ? nullptr
                                                                                   : object;
}

void ObjectTable::removeDead() {
    m_elements.removeIf([](const Entry& entry) { return entry.living.isNull(); });
}

} // namespace UIControls
} // namespace Vorsk
